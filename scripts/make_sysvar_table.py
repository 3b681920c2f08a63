#!/usr/bin/env python3
"""One-off conversion that produced host/runtime/sysvar_table.tsv.

It reads the system-variable inventory of the shared AutoLISP conformance suite (names,
types, documented defaults, read-only flags, gathered from the host's public reference)
and writes one row per variable of the common and AUTOCAD profiles. The scope and range
columns come from the lists below (the host's public reference, variable by variable).
The table is maintained by hand from then on; run this again only to start over:

    python3 scripts/make_sysvar_table.py ../shared/testdata > host/runtime/sysvar_table.tsv
"""
import re
import sys

# Variables the drawing keeps (saved in it, one value per open drawing).
DRAWING = set("""
ANGBASE ANGDIR ATTMODE AUNITS AUPREC CECOLOR CELTSCALE CELTYPE CELWEIGHT CEPSNTYPE
CHAMFERA CHAMFERB CHAMFERC CHAMFERD CLAYER CMLJUST CMLSCALE CMLSTYLE CSHADOW
DIMADEC DIMALT DIMALTD DIMALTF DIMALTRND DIMALTTD DIMALTTZ DIMALTU DIMALTZ DIMAPOST
DIMASSOC DIMASZ DIMATFIT DIMAUNIT DIMAZIN DIMBLK DIMBLK1 DIMBLK2 DIMCEN DIMCLRD DIMCLRE
DIMCLRT DIMDEC DIMDLE DIMDLI DIMDSEP DIMEXE DIMEXO DIMFRAC DIMGAP DIMJUST DIMLDRBLK
DIMLFAC DIMLIM DIMLTEX1 DIMLTEX2 DIMLTYPE DIMLUNIT DIMLWD DIMLWE DIMPOST DIMRND DIMSAH
DIMSCALE DIMSD1 DIMSD2 DIMSE1 DIMSE2 DIMSOXD DIMSTYLE DIMTAD DIMTDEC DIMTFAC DIMTFILL
DIMTFILLCLR DIMTIH DIMTIX DIMTM DIMTMOVE DIMTOFL DIMTOH DIMTOL DIMTOLJ DIMTP DIMTSZ
DIMTVP DIMTXSTY DIMTXT DIMTZIN DIMUPT DIMZIN DISPSILH DWGCODEPAGE ELEVATION EXTMAX
EXTMIN EXTNAMES FILLETRAD FILLMODE GRIDMODE GRIDUNIT HANDSEED HYPERLINKBASE INDEXCTL
INSBASE INSUNITS INSUNITSDEFSOURCE INSUNITSDEFTARGET INTERFERECOLOR LIMCHECK LIMMAX
LIMMIN LTSCALE LUNITS LUPREC LWDISPLAY MAXACTVP MEASUREMENT MIRRTEXT OBSCOLOR OBSLTYPE
ORTHOMODE PDMODE PDSIZE PELEVATION PLINEGEN PLINEWID PROJECTNAME PROXYGRAPHICS
PSLTSCALE PSTYLEMODE PSVPSCALE PUCSBASE QTEXTMODE REGENMODE SHADEDGE SHADEDIF SKETCHINC
SKPOLY SNAPANG SNAPBASE SNAPISOPAIR SNAPMODE SNAPSTYL SNAPUNIT SORTENTS SPLINESEGS
SPLINETYPE SURFTAB1 SURFTAB2 SURFTYPE SURFU SURFV TDCREATE TDINDWG TDUCREATE TDUPDATE
TDUSRTIMER TDUUPDATE TEXTSIZE TEXTSTYLE THICKNESS TILEMODE TRACEWID TREEDEPTH UCSBASE
UCSNAME UCSORG UCSXDIR UCSYDIR UNITMODE USERI1 USERI2 USERI3 USERI4 USERI5 USERR1
USERR2 USERR3 USERR4 USERR5 VISRETAIN WORLDVIEW XCLIPFRAME XEDIT CVPORT CTAB DBMOD
DWGNAME DWGPREFIX DWGTITLED LASTPOINT
""".split())

# Values the host works out when asked (clock, files, the drawing's state).
HOST = set("""
ACADPREFIX ACADVER CDATE CTAB DATE DWGNAME DWGPREFIX DWGTITLED HANDSEED LOGINNAME
MILLISECS PLATFORM PRODUCT PROGRAM SYSCODEPAGE DWGCODEPAGE LOCALE TEMPPREFIX
TDINDWG TDUSRTIMER
""".split())

# Ranges a write must respect: low..high (either end may be left open).
RANGES = {
    "ANGDIR": "0..1", "ATTDIA": "0..1", "ATTMODE": "0..2", "ATTREQ": "0..1",
    "AUNITS": "0..4", "AUPREC": "0..8", "BLIPMODE": "0..1", "CMDDIA": "0..1",
    "CMDECHO": "0..1", "DIMZIN": "0..15", "DRAGMODE": "0..2", "EXPERT": "0..5",
    "EXTNAMES": "0..1", "FILEDIA": "0..1", "FILLMODE": "0..1", "GRIDMODE": "0..1",
    "HIGHLIGHT": "0..1", "LIMCHECK": "0..1", "LUNITS": "1..5", "LUPREC": "0..8",
    "MAXSORT": "0..32767", "MIRRTEXT": "0..1", "ORTHOMODE": "0..1", "OSMODE": "0..32767",
    "PICKADD": "0..2", "PLINEGEN": "0..1", "PSLTSCALE": "0..1", "QTEXTMODE": "0..1",
    "REGENMODE": "0..1", "SNAPMODE": "0..1", "SORTENTS": "0..127", "SPLFRAME": "0..1",
    "TEXTFILL": "0..1", "TILEMODE": "0..1", "UNITMODE": "0..1", "VISRETAIN": "0..1",
    "DIMSCALE": "0..", "DIMASZ": "0..", "FILLETRAD": "0..", "PDSIZE": "..",
    "SURFTAB1": "2..32766", "SURFTAB2": "2..32766", "SPLINESEGS": "-32768..32767",
    "CVPORT": "1..32767", "DELOBJ": "-3..3", "PDMODE": "0..99",
    **{f"USERI{i}": "-32768..32767" for i in range(1, 6)},
}


def main():
    suite = sys.argv[1] + "/lisp/clautolisp-tests/sysvar/inventory-coverage.lsp"
    text = open(suite, encoding="utf-8").read()
    pattern = re.compile(
        r'\((deftest(?:-error)?) "([^"]+)"\s*\n\s*\'\(\(operator \. "([^"]+)"\) '
        r'\(area \. "sysvar"\) \(profile \. (\w+)\)\)\s*\n\s*\'(.*?)\n\s*(.*?)\)\n')
    rows = {}
    for _, test, name, profile, _, expected in pattern.findall(text):
        if profile == "BRICSCAD":
            continue
        row = rows.setdefault(name, {"type": "", "default": "", "ro": False})
        if test.endswith("getvar-type"):
            row["type"] = expected.lstrip("'")
        elif test.endswith("getvar-default"):
            row["default"] = expected.lstrip("'")
        elif test.endswith("readonly-signals"):
            row["ro"] = True
    print("# System variables: one per line, tab-separated.")
    print("# name  type (int real str list)  default (a LISP literal; empty: 0, 0.0, \"\" or")
    print("# (0.0 0.0 0.0))  access (rw, ro)  scope (session; drawing: one value per open")
    print("# drawing; host: worked out when read)  range (low..high, either end open; empty: any)")
    for name, row in rows.items():
        scope = "host" if name in HOST else "drawing" if name in DRAWING else "session"
        print("\t".join([name, row["type"], row["default"], "ro" if row["ro"] else "rw", scope,
                         RANGES.get(name, "")]))


main()
