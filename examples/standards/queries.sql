-- Stored queries of the standards database.

-- The layer keys of one layer system with the layers they select, by key name.
CREATE PROCEDURE qryLayerKeysOfSystem (pSystem LONG) AS
SELECT tblLayerKey.sKey, tblLayer.sName, tblLayer.iColor, tblLayer.sLinetype,
       tblLayer.sLineweight, tblLayer.bPlot
FROM tblLayerKey INNER JOIN tblLayer ON tblLayerKey.ixLayer = tblLayer.ixLayer
WHERE tblLayerKey.ixLayerSystem = pSystem
ORDER BY tblLayerKey.sKey;

-- The labels of one label group, in their display order.
CREATE PROCEDURE qryLabelGroup (pGroup TEXT(255)) AS
SELECT sKey, sLabel, dWidth, sJustification, bDisplay, iSortOrder
FROM tblLabelGroup
WHERE sGroup = pGroup
ORDER BY iSortOrder;

-- The layer systems in their sort order, with the number of keys each one has.
CREATE PROCEDURE qryLayerSystems AS
SELECT tblLayerSystem.ixLayerSystem, tblLayerSystem.sDescription,
       Count(tblLayerKey.ixLayerKey) AS iKeys
FROM tblLayerSystem LEFT JOIN tblLayerKey
     ON tblLayerSystem.ixLayerSystem = tblLayerKey.ixLayerSystem
GROUP BY tblLayerSystem.ixLayerSystem, tblLayerSystem.sDescription, tblLayerSystem.iSortOrder
ORDER BY tblLayerSystem.iSortOrder;
