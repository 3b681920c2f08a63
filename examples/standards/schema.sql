-- The tables of a standards database, in Access SQL.
-- One statement per entry, each ending with ";" at the end of a line; lines that begin
-- with "--" are notes for the reader and are not sent to the database.

CREATE TABLE tblGlobal (
  ixGlobal COUNTER CONSTRAINT ixGlobal PRIMARY KEY,
  sKey TEXT(255) NOT NULL,
  bNumeric YESNO NOT NULL,
  sText TEXT(255),
  dNumber DOUBLE
);
CREATE UNIQUE INDEX sKey ON tblGlobal (sKey);

CREATE TABLE tblLayer (
  ixLayer COUNTER CONSTRAINT ixLayer PRIMARY KEY,
  sName TEXT(255) NOT NULL,
  bRGBColor YESNO NOT NULL,
  iColor LONG,
  iRed LONG,
  iGreen LONG,
  iBlue LONG,
  sLinetype TEXT(255) NOT NULL,
  bPlot YESNO NOT NULL,
  sLineweight TEXT(255),
  sPlotstyle TEXT(255),
  ixMasterDatabase LONG,
  iMasterDatabaseIndex LONG
);
CREATE UNIQUE INDEX sName ON tblLayer (sName);

CREATE TABLE tblLayerSystem (
  ixLayerSystem COUNTER CONSTRAINT ixLayerSystem PRIMARY KEY,
  sDescription TEXT(255) NOT NULL,
  iSortOrder LONG NOT NULL,
  bSolid YESNO NOT NULL,
  sPrefix TEXT(255) NOT NULL,
  sSuffix TEXT(255) NOT NULL,
  supplyHatchOn YESNO NOT NULL,
  supplyHatchType TEXT(255) NOT NULL,
  supplyHatchPattern TEXT(255) NOT NULL,
  supplyHatchAngle DOUBLE NOT NULL,
  supplyHatchScale DOUBLE NOT NULL,
  returnHatchOn YESNO NOT NULL,
  returnHatchType TEXT(255) NOT NULL,
  returnHatchPattern TEXT(255) NOT NULL,
  returnHatchAngle DOUBLE NOT NULL,
  returnHatchScale DOUBLE NOT NULL,
  exhaustHatchOn YESNO NOT NULL,
  exhaustHatchType TEXT(255) NOT NULL,
  exhaustHatchPattern TEXT(255) NOT NULL,
  exhaustHatchAngle DOUBLE NOT NULL,
  exhaustHatchScale DOUBLE NOT NULL,
  outsideHatchOn YESNO NOT NULL,
  outsideHatchType TEXT(255) NOT NULL,
  outsideHatchPattern TEXT(255) NOT NULL,
  outsideHatchAngle DOUBLE NOT NULL,
  outsideHatchScale DOUBLE NOT NULL,
  bHatchFlexDucts YESNO NOT NULL,
  dHatchOverhang DOUBLE NOT NULL,
  ixMasterDatabase LONG,
  iMasterDatabaseIndex LONG
);
CREATE UNIQUE INDEX sDescription ON tblLayerSystem (sDescription);

-- A key belongs to one layer system, or to the general layer system when ixLayerSystem
-- is null; the same key name recurs in several systems.
CREATE TABLE tblLayerKey (
  ixLayerKey COUNTER CONSTRAINT ixLayerKey PRIMARY KEY,
  ixLayerSystem LONG,
  ixLayer LONG NOT NULL,
  sKey TEXT(255) NOT NULL,
  ixMasterDatabase LONG,
  iMasterDatabaseIndex LONG
);
CREATE INDEX sKey ON tblLayerKey (sKey);
CREATE UNIQUE INDEX isxLayerSystemKey ON tblLayerKey (ixLayerSystem, sKey);
CREATE INDEX ixLayer ON tblLayerKey (ixLayer);

CREATE TABLE tblTextStyle (
  ixTextStyle COUNTER CONSTRAINT ixTextStyle PRIMARY KEY,
  sKey TEXT(255) NOT NULL,
  sStyleName TEXT(255),
  dHeight DOUBLE,
  dScaleFactor DOUBLE,
  ixMasterDatabase LONG,
  iMasterDatabaseIndex LONG
);
CREATE UNIQUE INDEX sKey ON tblTextStyle (sKey);

CREATE TABLE tblLabelGroup (
  ixLabelGroup COUNTER CONSTRAINT ixLabelGroup PRIMARY KEY,
  sGroup TEXT(255) NOT NULL,
  sKey TEXT(255) NOT NULL,
  sLabel TEXT(255) NOT NULL,
  dWidth DOUBLE,
  sJustification TEXT(255) NOT NULL,
  bDisplay YESNO NOT NULL,
  iSortOrder LONG NOT NULL
);
CREATE UNIQUE INDEX isxGroupKey ON tblLabelGroup (sGroup, sKey);
CREATE INDEX isxGroupOrder ON tblLabelGroup (sGroup, iSortOrder);
