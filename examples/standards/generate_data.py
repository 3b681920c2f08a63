#!/usr/bin/env python3
"""Writes data.sql: the rows of the sample standards database, as Access INSERT statements.

The rows are made from the tables below, deterministically (run it twice, get the same
file). Layer names follow a discipline-major-minor scheme (M- mechanical, P- plumbing,
F- fire protection, E- electrical, G- general); every discipline layer exists for new
work, existing (-EXST) and demolition (-DEMO). Layer keys are the names the product's
commands ask for; each layer system maps its keys onto the layers of its status, and the
general layer system's keys have a null ixLayerSystem. Empty texts are written as one
blank, as the product writes them.

Usage: generate_data.py [OUTPUT]   (default: data.sql beside this script)
"""

import os
import sys

# --- layers -------------------------------------------------------------------------
# (key, layer base name, colour, linetype, lineweight)
HVAC = [
    ("SupplyDuct", "M-DUCT-SUPP", 150, "Continuous", "0.35 mm"),
    ("ReturnDuct", "M-DUCT-RETN", 30, "Continuous", "0.35 mm"),
    ("ExhaustDuct", "M-DUCT-EXHS", 210, "Continuous", "0.35 mm"),
    ("OutsideAirDuct", "M-DUCT-OUTS", 90, "Continuous", "0.35 mm"),
    ("FlexDuct", "M-DUCT-FLEX", 150, "Continuous", "0.25 mm"),
    ("DuctInsulation", "M-DUCT-INSL", 8, "DASHED", "0.18 mm"),
    ("DuctLining", "M-DUCT-LINE", 9, "DASHED", "0.13 mm"),
    ("DuctCenterline", "M-DUCT-CNTR", 2, "CENTER", "0.13 mm"),
    ("HiddenDuct", "M-DUCT-HIDN", 150, "HIDDEN", "0.25 mm"),
    ("AccessDoor", "M-DUCT-ACCS", 4, "Continuous", "0.25 mm"),
    ("Damper", "M-DUCT-DAMP", 6, "Continuous", "0.25 mm"),
    ("FireDamper", "M-DUCT-FDMP", 1, "Continuous", "0.35 mm"),
    ("TurningVane", "M-DUCT-TVAN", 4, "Continuous", "0.18 mm"),
    ("DuctHanger", "M-DUCT-HANG", 8, "Continuous", "0.18 mm"),
    ("Equipment", "M-HVAC-EQPM", 5, "Continuous", "0.50 mm"),
    ("Diffuser", "M-HVAC-DIFF", 4, "Continuous", "0.25 mm"),
    ("Grille", "M-HVAC-GRIL", 4, "Continuous", "0.25 mm"),
    ("Register", "M-HVAC-REGS", 4, "Continuous", "0.25 mm"),
    ("Louver", "M-HVAC-LOUV", 4, "Continuous", "0.25 mm"),
    ("TerminalUnit", "M-HVAC-UNIT", 5, "Continuous", "0.35 mm"),
    ("Controls", "M-HVAC-CTRL", 6, "Continuous", "0.18 mm"),
    ("ControlWiring", "M-HVAC-CTRL-WIRE", 6, "DASHED", "0.13 mm"),
    ("Thermostat", "M-HVAC-THER", 6, "Continuous", "0.18 mm"),
    ("Sensor", "M-HVAC-SENS", 6, "Continuous", "0.18 mm"),
    ("Tags", "M-HVAC-IDEN", 7, "Continuous", "0.25 mm"),
    ("Notes", "M-HVAC-NOTE", 7, "Continuous", "0.25 mm"),
    ("Dimensions", "M-HVAC-DIMS", 7, "Continuous", "0.18 mm"),
    ("Schedule", "M-HVAC-SCHD", 7, "Continuous", "0.25 mm"),
    ("HeatingWaterSupply", "M-HWTR-SUPP", 1, "HOT_WATER_SUPPLY", "0.35 mm"),
    ("HeatingWaterReturn", "M-HWTR-RETN", 1, "HOT_WATER_RETURN", "0.35 mm"),
    ("HeatingWaterValve", "M-HWTR-VALV", 1, "Continuous", "0.25 mm"),
    ("ChilledWaterSupply", "M-CHWT-SUPP", 130, "CHILLED_WATER_SUPPLY", "0.35 mm"),
    ("ChilledWaterReturn", "M-CHWT-RETN", 130, "CHILLED_WATER_RETURN", "0.35 mm"),
    ("ChilledWaterValve", "M-CHWT-VALV", 130, "Continuous", "0.25 mm"),
    ("CondenserWaterSupply", "M-COND-SUPP", 170, "DASHED", "0.35 mm"),
    ("CondenserWaterReturn", "M-COND-RETN", 170, "DASHED2", "0.35 mm"),
    ("SteamHighPressure", "M-STEM-HPRS", 11, "Continuous", "0.35 mm"),
    ("SteamLowPressure", "M-STEM-LPRS", 11, "DASHED", "0.35 mm"),
    ("SteamCondensate", "M-STEM-COND", 41, "DASHDOT", "0.25 mm"),
    ("RefrigerantLiquid", "M-REFG-LIQD", 200, "Continuous", "0.25 mm"),
    ("RefrigerantSuction", "M-REFG-SUCT", 200, "DASHED", "0.25 mm"),
    ("RefrigerantHotGas", "M-REFG-HOTG", 240, "PHANTOM", "0.25 mm"),
    ("CondensateDrain", "M-CNDS-PIPE", 140, "DASHDOT", "0.25 mm"),
    ("KitchenExhaust", "M-KTCH-EXHS", 210, "Continuous", "0.50 mm"),
]

PLUMBING = [
    ("DomesticColdWater", "P-DOMW-COLD", 4, "Continuous", "0.35 mm"),
    ("DomesticHotWater", "P-DOMW-HOTW", 1, "DASHED", "0.35 mm"),
    ("DomesticHotWaterReturn", "P-DOMW-HWRC", 1, "DASHDOT", "0.25 mm"),
    ("TemperedWater", "P-DOMW-TEMP", 40, "DASHED2", "0.25 mm"),
    ("DomesticWaterValve", "P-DOMW-VALV", 4, "Continuous", "0.25 mm"),
    ("BackflowPreventer", "P-DOMW-BKFL", 4, "Continuous", "0.25 mm"),
    ("SanitaryPipe", "P-SANR-PIPE", 3, "Continuous", "0.50 mm"),
    ("SanitaryBelowFloor", "P-SANR-BFLR", 3, "HIDDEN", "0.50 mm"),
    ("Vent", "P-SANR-VENT", 3, "DASHED", "0.25 mm"),
    ("FloorDrain", "P-SANR-FLDR", 3, "Continuous", "0.25 mm"),
    ("Cleanout", "P-SANR-CLNO", 3, "Continuous", "0.18 mm"),
    ("GreaseInterceptor", "P-SANR-GRIN", 3, "Continuous", "0.35 mm"),
    ("StormPipe", "P-STRM-PIPE", 5, "Continuous", "0.50 mm"),
    ("RoofDrain", "P-STRM-RDRN", 5, "Continuous", "0.25 mm"),
    ("OverflowDrain", "P-STRM-OVFL", 5, "DASHED", "0.35 mm"),
    ("NaturalGas", "P-GAS-PIPE", 2, "GAS_LINE", "0.35 mm"),
    ("GasValve", "P-GAS-VALV", 2, "Continuous", "0.25 mm"),
    ("GasMeter", "P-GAS-METR", 2, "Continuous", "0.25 mm"),
    ("WaterCloset", "P-FIXT-WCLO", 6, "Continuous", "0.25 mm"),
    ("Lavatory", "P-FIXT-LAVS", 6, "Continuous", "0.25 mm"),
    ("Urinal", "P-FIXT-URIN", 6, "Continuous", "0.25 mm"),
    ("Sink", "P-FIXT-SINK", 6, "Continuous", "0.25 mm"),
    ("Shower", "P-FIXT-SHWR", 6, "Continuous", "0.25 mm"),
    ("DrinkingFountain", "P-FIXT-DFTN", 6, "Continuous", "0.25 mm"),
    ("MopSink", "P-FIXT-MOPS", 6, "Continuous", "0.25 mm"),
    ("EmergencyShower", "P-FIXT-EMSH", 6, "Continuous", "0.25 mm"),
    ("Oxygen", "P-MDGS-OXYG", 92, "MED_GAS_OXYGEN", "0.25 mm"),
    ("MedicalVacuum", "P-MDGS-VACU", 250, "MED_GAS_VACUUM", "0.25 mm"),
    ("MedicalAir", "P-MDGS-MAIR", 252, "DASHED", "0.25 mm"),
    ("Nitrogen", "P-MDGS-NITR", 8, "DASHDOT", "0.25 mm"),
    ("WaterHeater", "P-EQPM-WHTR", 5, "Continuous", "0.50 mm"),
    ("Pump", "P-EQPM-PUMP", 5, "Continuous", "0.35 mm"),
    ("Tank", "P-EQPM-TANK", 5, "Continuous", "0.35 mm"),
    ("Equipment", "P-EQPM", 5, "Continuous", "0.50 mm"),
    ("Tags", "P-PLMB-IDEN", 7, "Continuous", "0.25 mm"),
    ("Notes", "P-PLMB-NOTE", 7, "Continuous", "0.25 mm"),
    ("Dimensions", "P-PLMB-DIMS", 7, "Continuous", "0.18 mm"),
    ("Schedule", "P-PLMB-SCHD", 7, "Continuous", "0.25 mm"),
    ("Riser", "P-PLMB-RISR", 7, "Continuous", "0.25 mm"),
]

FIRE = [
    ("SprinklerMain", "F-SPRN-MAIN", 1, "Continuous", "0.50 mm"),
    ("SprinklerBranch", "F-SPRN-BRCH", 1, "Continuous", "0.25 mm"),
    ("SprinklerHead", "F-SPRN-HEAD", 1, "Continuous", "0.18 mm"),
    ("Standpipe", "F-STPI-PIPE", 1, "PHANTOM", "0.50 mm"),
    ("FireDepartmentConnection", "F-FDEP", 1, "Continuous", "0.35 mm"),
    ("FireExtinguisher", "F-EXTG", 1, "Continuous", "0.18 mm"),
    ("Tags", "F-PROT-IDEN", 7, "Continuous", "0.25 mm"),
    ("Notes", "F-PROT-NOTE", 7, "Continuous", "0.25 mm"),
]

ELECTRICAL = [
    ("LightFixture", "E-LITE-FIXT", 3, "Continuous", "0.35 mm"),
    ("EmergencyLight", "E-LITE-EMER", 1, "Continuous", "0.35 mm"),
    ("ExitSign", "E-LITE-EXIT", 1, "Continuous", "0.25 mm"),
    ("LightSwitch", "E-LITE-SWCH", 3, "Continuous", "0.25 mm"),
    ("LightingCircuit", "E-LITE-CIRC", 3, "ARC_WIRING", "0.25 mm"),
    ("OccupancySensor", "E-LITE-OCCS", 3, "Continuous", "0.18 mm"),
    ("SiteLighting", "E-LITE-SITE", 3, "Continuous", "0.35 mm"),
    ("LightingTags", "E-LITE-IDEN", 7, "Continuous", "0.25 mm"),
    ("Receptacle", "E-POWR-RCPT", 5, "Continuous", "0.25 mm"),
    ("DedicatedReceptacle", "E-POWR-DEDI", 5, "Continuous", "0.25 mm"),
    ("FloorBox", "E-POWR-FLOR", 5, "Continuous", "0.25 mm"),
    ("PowerCircuit", "E-POWR-CIRC", 5, "ARC_WIRING", "0.25 mm"),
    ("HomeRun", "E-POWR-HOME", 5, "Continuous", "0.25 mm"),
    ("Equipment", "E-POWR-EQPM", 5, "Continuous", "0.50 mm"),
    ("Panelboard", "E-POWR-PANL", 5, "Continuous", "0.50 mm"),
    ("Disconnect", "E-POWR-DISC", 5, "Continuous", "0.35 mm"),
    ("Motor", "E-POWR-MOTR", 5, "Continuous", "0.35 mm"),
    ("Switchboard", "E-POWR-SWBD", 5, "Continuous", "0.70 mm"),
    ("Transformer", "E-POWR-XFMR", 5, "Continuous", "0.50 mm"),
    ("Conduit", "E-POWR-COND", 5, "DASHED", "0.25 mm"),
    ("UndergroundConduit", "E-POWR-UGND", 5, "HIDDEN", "0.35 mm"),
    ("Data", "E-COMM-DATA", 4, "Continuous", "0.25 mm"),
    ("Telephone", "E-COMM-TELE", 4, "Continuous", "0.25 mm"),
    ("CableTV", "E-COMM-CATV", 4, "Continuous", "0.25 mm"),
    ("EquipmentRack", "E-COMM-RACK", 4, "Continuous", "0.35 mm"),
    ("CableTray", "E-COMM-TRAY", 4, "DASHED", "0.35 mm"),
    ("FireAlarmDevice", "E-FIRE-DEVC", 1, "Continuous", "0.25 mm"),
    ("PullStation", "E-FIRE-PULL", 1, "Continuous", "0.25 mm"),
    ("HornStrobe", "E-FIRE-HORN", 1, "Continuous", "0.25 mm"),
    ("SmokeDetector", "E-FIRE-SMOK", 1, "Continuous", "0.25 mm"),
    ("FireAlarmPanel", "E-FIRE-PANL", 1, "Continuous", "0.50 mm"),
    ("CardReader", "E-SECU-CARD", 6, "Continuous", "0.25 mm"),
    ("Camera", "E-SECU-CCTV", 6, "Continuous", "0.25 mm"),
    ("DoorContact", "E-SECU-DOOR", 6, "Continuous", "0.18 mm"),
    ("GroundingConductor", "E-GRND-COND", 94, "DASHDOT", "0.25 mm"),
    ("GroundRod", "E-GRND-ROD", 94, "Continuous", "0.25 mm"),
    ("OneLineFeeder", "E-ONEL-FEED", 5, "Continuous", "0.50 mm"),
    ("OneLineEquipment", "E-ONEL-EQPM", 5, "Continuous", "0.70 mm"),
    ("Tags", "E-ELEC-IDEN", 7, "Continuous", "0.25 mm"),
    ("Notes", "E-ELEC-NOTE", 7, "Continuous", "0.25 mm"),
    ("Dimensions", "E-ELEC-DIMS", 7, "Continuous", "0.18 mm"),
    ("Schedule", "E-ELEC-SCHD", 7, "Continuous", "0.25 mm"),
    ("PanelSchedule", "E-ELEC-PNSC", 7, "Continuous", "0.25 mm"),
]

# The general layer system: one layer per key, no status variants.
# (key, layer, colour, linetype, lineweight, plots)
GENERAL = [
    ("Text", "G-ANNO-TEXT", 7, "Continuous", "0.25 mm", True),
    ("Dimensions", "G-ANNO-DIMS", 7, "Continuous", "0.18 mm", True),
    ("Symbols", "G-ANNO-SYMB", 7, "Continuous", "0.25 mm", True),
    ("Revisions", "G-ANNO-REVS", 1, "Continuous", "0.35 mm", True),
    ("RevisionClouds", "G-ANNO-REVC", 1, "Continuous", "0.50 mm", True),
    ("TitleBlock", "G-ANNO-TTLB", 7, "Continuous", "0.50 mm", True),
    ("KeyNotes", "G-ANNO-KEYN", 7, "Continuous", "0.25 mm", True),
    ("GeneralNotes", "G-ANNO-NOTE", 7, "Continuous", "0.25 mm", True),
    ("Legend", "G-ANNO-LEGN", 7, "Continuous", "0.25 mm", True),
    ("MatchLine", "G-ANNO-MATC", 7, "PHANTOM", "0.70 mm", True),
    ("NonPlotting", "G-ANNO-NPLT", 6, "Continuous", "Default", False),
    ("Viewport", "G-VIEW", 8, "Continuous", "Default", False),
    ("Grid", "G-GRID", 8, "CENTER", "0.13 mm", True),
    ("GridTags", "G-GRID-IDEN", 8, "Continuous", "0.18 mm", True),
    ("Walls", "A-WALL", 8, "Continuous", "0.25 mm", True),
    ("Doors", "A-DOOR", 8, "Continuous", "0.18 mm", True),
    ("Glazing", "A-GLAZ", 8, "Continuous", "0.13 mm", True),
    ("CeilingGrid", "A-CLNG-GRID", 9, "Continuous", "0.00 mm", True),
    ("RoomNames", "A-AREA-IDEN", 8, "Continuous", "0.18 mm", True),
    ("Columns", "S-COLS", 8, "Continuous", "0.25 mm", True),
    ("Beams", "S-BEAM", 8, "HIDDEN", "0.18 mm", True),
    ("ExternalReferences", "X-REFS", 8, "Continuous", "Default", True),
]

# Status variants of the discipline layers: (suffix, layer system word).
STATUSES = [("", "New Work"), ("-EXST", "Existing"), ("-DEMO", "Demolition")]

# A few layers carry a true colour instead of an index colour.
TRUE_COLOURS = {
    "M-DUCT-SUPP": (0, 112, 192),
    "M-DUCT-RETN": (204, 102, 0),
    "M-DUCT-EXHS": (153, 51, 153),
    "M-DUCT-OUTS": (0, 153, 76),
    "P-DOMW-HOTW": (192, 0, 0),
    "P-MDGS-OXYG": (0, 176, 80),
    "E-LITE-EMER": (255, 51, 51),
}

# --- layer systems ------------------------------------------------------------------
HATCH_OFF = ("Predefined", "ANSI31", 45.0, 1.0)


def hatch(on, kind, pattern, angle, scale):
    return (on, kind, pattern, angle, scale)


# (description, keys, status suffix, prefix, solid, supply, return, exhaust, outside,
#  flex ducts hatched, overhang)
LAYER_SYSTEMS = [
    ("HVAC New Work", HVAC, "", "M-", False,
     hatch(True, "Predefined", "ANSI31", 45.0, 1.0), hatch(True, "Predefined", "ANSI31", 135.0, 1.0),
     hatch(True, "Predefined", "ANSI37", 45.0, 1.5), hatch(True, "User", "_USER", 0.0, 0.25),
     True, 0.0625),
    ("HVAC Existing", HVAC, "-EXST", "M-", False,
     hatch(True, "Predefined", "DOTS", 0.0, 2.0), hatch(True, "Predefined", "DOTS", 0.0, 2.0),
     hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF), False, 0.0),
    ("HVAC Demolition", HVAC, "-DEMO", "M-", False,
     hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF),
     hatch(False, *HATCH_OFF), False, 0.0),
    ("Plumbing New Work", PLUMBING, "", "P-", True,
     hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF),
     hatch(False, *HATCH_OFF), False, 0.0),
    ("Plumbing Existing", PLUMBING, "-EXST", "P-", True,
     hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF),
     hatch(False, *HATCH_OFF), False, 0.0),
    ("Fire Protection", FIRE, "", "F-", True,
     hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF),
     hatch(False, *HATCH_OFF), False, 0.0),
    ("Electrical New Work", ELECTRICAL, "", "E-", False,
     hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF),
     hatch(False, *HATCH_OFF), False, 0.0),
    ("Electrical Existing", ELECTRICAL, "-EXST", "E-", False,
     hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF),
     hatch(False, *HATCH_OFF), False, 0.0),
    ("Electrical Demolition", ELECTRICAL, "-DEMO", "E-", False,
     hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF), hatch(False, *HATCH_OFF),
     hatch(False, *HATCH_OFF), False, 0.0),
]

# --- text styles --------------------------------------------------------------------
# (key, drawing style, height or None, width factor or None)
TEXT_STYLES = [
    ("Standard", "Standard", None, 1.0),
    ("Annotation", "Kelvo-Simplex", 0.09375, 1.0),
    ("GeneralNotes", "Kelvo-Simplex", 0.09375, 0.9),
    ("KeyNotes", "Kelvo-Simplex", 0.09375, 0.9),
    ("DuctSize", "Kelvo-RomanS", 0.078125, 0.85),
    ("DuctElevation", "Kelvo-RomanS", 0.0625, 0.85),
    ("AirflowCFM", "Kelvo-RomanS", 0.078125, 0.85),
    ("DiffuserTag", "Kelvo-RomanS", 0.0625, 0.9),
    ("EquipmentTag", "Kelvo-RomanD", 0.125, 1.0),
    ("PipeSize", "Kelvo-RomanS", 0.078125, 0.85),
    ("PipeLabel", "Kelvo-RomanS", 0.0625, 0.85),
    ("FixtureTag", "Kelvo-RomanS", 0.078125, 0.9),
    ("CircuitNumber", "Kelvo-RomanS", 0.0625, 0.8),
    ("PanelName", "Kelvo-RomanD", 0.125, 1.0),
    ("DeviceTag", "Kelvo-RomanS", 0.0625, 0.9),
    ("RoomName", "Kelvo-Arial", 0.125, 1.0),
    ("RoomNumber", "Kelvo-Arial", 0.09375, 1.0),
    ("ScheduleTitle", "Kelvo-ArialBold", 0.1875, 1.0),
    ("ScheduleHeader", "Kelvo-ArialBold", 0.09375, 0.9),
    ("ScheduleBody", "Kelvo-Arial", 0.078125, 0.9),
    ("SheetTitle", "Kelvo-ArialBold", 0.25, 1.0),
    ("DetailTitle", "Kelvo-ArialBold", 0.1875, 1.0),
    ("Revision", "Kelvo-Simplex", 0.09375, 1.0),
    ("Legend", "Kelvo-Simplex", 0.09375, None),
    ("Photometrics", "Kelvo-RomanS", 0.0625, 0.8),
    ("Owner's Notes", "Kelvo-Simplex", None, None),
]

# --- label groups -------------------------------------------------------------------
# group -> [(key, label, width or None, justification, displayed)]
LABEL_GROUPS = {
    "AirDeviceSchedule": [
        ("Tag", "MARK", 0.75, "Center", True),
        ("Manufacturer", "MANUFACTURER", 1.5, "Left", True),
        ("Model", "MODEL", 1.25, "Left", True),
        ("Type", "TYPE", 1.0, "Left", True),
        ("NeckSize", "NECK SIZE (Ø)", 0.9, "Center", True),
        ("FaceSize", "FACE SIZE", 0.9, "Center", True),
        ("CFM", "CFM", 0.75, "Right", True),
        ("NC", "NC", 0.5, "Right", True),
        ("PressureDrop", "\u0394P (IN. W.C.)", 0.9, "Right", False),
        ("Finish", "FINISH", 1.0, "Left", True),
        ("Remarks", "REMARKS", 2.5, "Left", True),
    ],
    "FanSchedule": [
        ("Tag", "MARK", 0.75, "Center", True),
        ("Service", "SERVICE", 1.75, "Left", True),
        ("Manufacturer", "MANUFACTURER", 1.5, "Left", True),
        ("Model", "MODEL", 1.25, "Left", True),
        ("CFM", "CFM", 0.75, "Right", True),
        ("StaticPressure", "ESP (IN. W.C.)", 0.9, "Right", True),
        ("RPM", "RPM", 0.6, "Right", True),
        ("HP", "HP", 0.5, "Right", True),
        ("Voltage", "V/PH/HZ", 0.9, "Center", True),
        ("Weight", "WEIGHT (LBS)", 0.8, "Right", False),
        ("Remarks", "REMARKS", 2.5, "Left", True),
    ],
    "AirHandlerSchedule": [
        ("Tag", "MARK", 0.75, "Center", True),
        ("SupplyCFM", "SUPPLY CFM", 0.8, "Right", True),
        ("OutsideAirCFM", "O.A. CFM", 0.8, "Right", True),
        ("CoolingCapacity", "COOLING (MBH)", 0.9, "Right", True),
        ("HeatingCapacity", "HEATING (MBH)", 0.9, "Right", True),
        ("EnteringAir", "EAT (°F)", 0.7, "Right", True),
        ("LeavingAir", "LAT (°F)", 0.7, "Right", True),
        ("FilterType", "FILTER", 1.0, "Left", True),
        ("Remarks", "REMARKS", 2.5, "Left", True),
    ],
    "PlumbingFixtureSchedule": [
        ("Tag", "MARK", 0.75, "Center", True),
        ("Fixture", "FIXTURE", 1.5, "Left", True),
        ("Manufacturer", "MANUFACTURER", 1.5, "Left", True),
        ("Model", "MODEL", 1.25, "Left", True),
        ("ColdWater", "CW", 0.5, "Center", True),
        ("HotWater", "HW", 0.5, "Center", True),
        ("Waste", "WASTE", 0.6, "Center", True),
        ("Vent", "VENT", 0.6, "Center", True),
        ("Trap", "TRAP", 0.6, "Center", False),
        ("Remarks", "REMARKS", 2.5, "Left", True),
    ],
    "LightFixtureSchedule": [
        ("Tag", "TYPE", 0.6, "Center", True),
        ("Description", "DESCRIPTION", 2.5, "Left", True),
        ("Manufacturer", "MANUFACTURER", 1.5, "Left", True),
        ("Model", "CATALOG NUMBER", 1.75, "Left", True),
        ("Lamps", "LAMPS", 1.0, "Left", True),
        ("Watts", "WATTS", 0.6, "Right", True),
        ("Voltage", "VOLTS", 0.6, "Right", True),
        ("Mounting", "MOUNTING", 1.0, "Left", True),
        ("Lumens", "LUMENS", 0.7, "Right", False),
        ("Remarks", "REMARKS", 2.0, "Left", True),
    ],
    "PanelSchedule": [
        ("Circuit", "CKT", 0.4, "Center", True),
        ("Description", "LOAD DESCRIPTION", 2.0, "Left", True),
        ("Breaker", "BKR", 0.5, "Center", True),
        ("Poles", "P", 0.3, "Center", True),
        ("PhaseA", "A (VA)", 0.6, "Right", True),
        ("PhaseB", "B (VA)", 0.6, "Right", True),
        ("PhaseC", "C (VA)", 0.6, "Right", True),
        ("Notes", "NOTES", None, "Left", False),
    ],
}

# --- global settings ------------------------------------------------------------------
# (key, value): a number goes to dNumber with bNumeric true, a text to sText.
GLOBALS = [
    ("StandardsVersion", 12.0),
    ("StandardsName", "Tarvik Sample Standards"),
    ("CompanyName", "Tarvik Example Engineering"),
    ("Units", "Imperial"),
    ("DrawingScale", 48.0),
    ("DimensionScale", 48.0),
    ("TextHeight", 0.09375),
    ("LeaderArrowSize", 0.125),
    ("LeaderLanding", 0.25),
    ("DuctDefaultWidth", 12.0),
    ("DuctDefaultDepth", 10.0),
    ("DuctDefaultElevation", 108.0),
    ("DuctInsulationThickness", 1.5),
    ("DuctLiningThickness", 1.0),
    ("ElbowRadiusRatio", 1.5),
    ("TakeoffType", "Spin-in with damper"),
    ("FlexDuctMaxLength", 60.0),
    ("PipeDefaultSize", 0.75),
    ("PipeDefaultElevation", 96.0),
    ("PipeSlope", 0.0208333),
    ("CircuitPrefix", "LP-1"),
    ("PanelDefaultVoltage", "208Y/120V 3PH 4W"),
    ("ReceptacleHeight", 18.0),
    ("SwitchHeight", 48.0),
    ("LightLevelTarget", 50.0),
    ("LightLossFactor", 0.85),
    ("PhotometricGridSpacing", 24.0),
    ("ScheduleRowHeight", 0.3125),
    ("ScheduleTitleGap", 0.125),
    ("TagBlock", "TV_TAG_ROUND"),
    ("EquipmentTagBlock", "TV_TAG_HEX"),
    ("RevisionDelta", "TV_REV_DELTA"),
    ("SupportEmail", "support@tarvik.example"),
    ("ProjectFolder", "P:\\Projects"),
    ("AutoSaveMinutes", 15.0),
    ("DecimalPlaces", 2.0),
]


# --- SQL text -----------------------------------------------------------------------
def text(value):
    """An Access text literal: every ' doubled, an empty text written as one blank."""
    if value is None:
        return "Null"
    if value == "":
        value = " "
    return "'" + value.replace("'", "''") + "'"


def number(value):
    if value is None:
        return "Null"
    if isinstance(value, bool):
        return "True" if value else "False"
    if isinstance(value, float):
        return repr(value)
    return str(value)


def insert(table, columns, values):
    cols = ", ".join(columns)
    vals = ", ".join(values)
    return f"INSERT INTO {table} ({cols}) VALUES ({vals});"


def layer_rows():
    """Every layer as (name, colour, linetype, lineweight, plots, plot style); new-work
    layers first, then existing, then demolition, then the general ones."""
    seen = {}
    for suffix, _ in STATUSES:
        for table in (HVAC, PLUMBING, FIRE, ELECTRICAL):
            for _, base, colour, linetype, weight in table:
                name = base + suffix
                if name in seen:
                    continue
                if suffix == "-EXST":
                    row = (name, 8, linetype, "0.18 mm", True, "Screened 50%")
                elif suffix == "-DEMO":
                    row = (name, 1, "HIDDEN", "0.18 mm", True, "Screened 50%")
                else:
                    row = (name, colour, linetype, weight, True, None)
                seen[name] = row
    for _, name, colour, linetype, weight, plots in GENERAL:
        seen[name] = (name, colour, linetype, weight, plots, None)
    return list(seen.values())


def write(out):
    lines = ["-- Rows of the sample standards database, written by generate_data.py.", ""]

    lines.append("-- Global settings.")
    for key, value in GLOBALS:
        numeric = not isinstance(value, str)
        lines.append(insert("tblGlobal", ["sKey", "bNumeric", "sText", "dNumber"],
                            [text(key), number(numeric),
                             "Null" if numeric else text(value),
                             number(value) if numeric else "Null"]))

    lines += ["", "-- Layers; their ixLayer is their position in this list, from 1."]
    layer_ids = {}
    for i, (name, colour, linetype, weight, plots, style) in enumerate(layer_rows(), 1):
        layer_ids[name] = i
        rgb = TRUE_COLOURS.get(name)
        # Every seventh layer came from the office master database.
        master = (1, 1000 + i) if i % 7 == 0 else (None, None)
        lines.append(insert(
            "tblLayer",
            ["sName", "bRGBColor", "iColor", "iRed", "iGreen", "iBlue", "sLinetype", "bPlot",
             "sLineweight", "sPlotstyle", "ixMasterDatabase", "iMasterDatabaseIndex"],
            [text(name), number(rgb is not None), number(None if rgb else colour),
             number(rgb[0] if rgb else None), number(rgb[1] if rgb else None),
             number(rgb[2] if rgb else None), text(linetype), number(plots), text(weight),
             text(style), number(master[0]), number(master[1])]))

    lines += ["", "-- Layer systems; their ixLayerSystem is their position here, from 1."]
    for order, system in enumerate(LAYER_SYSTEMS, 1):
        description, _, suffix, prefix, solid = system[:5]
        groups = system[5:9]
        flex, overhang = system[9], system[10]
        columns = ["sDescription", "iSortOrder", "bSolid", "sPrefix", "sSuffix"]
        values = [text(description), number(order * 10), number(solid), text(prefix),
                  text(suffix)]
        for word, (on, kind, pattern, angle, scale) in zip(
                ("supply", "return", "exhaust", "outside"), groups):
            columns += [word + "HatchOn", word + "HatchType", word + "HatchPattern",
                        word + "HatchAngle", word + "HatchScale"]
            values += [number(on), text(kind), text(pattern), number(angle), number(scale)]
        columns += ["bHatchFlexDucts", "dHatchOverhang", "ixMasterDatabase",
                    "iMasterDatabaseIndex"]
        values += [number(flex), number(overhang), "Null", "Null"]
        lines.append(insert("tblLayerSystem", columns, values))

    lines += ["", "-- Layer keys of each layer system, then of the general layer system."]
    key_columns = ["ixLayerSystem", "ixLayer", "sKey", "ixMasterDatabase",
                   "iMasterDatabaseIndex"]
    for system_id, system in enumerate(LAYER_SYSTEMS, 1):
        keys, suffix = system[1], system[2]
        for key, base, *_ in keys:
            lines.append(insert("tblLayerKey", key_columns,
                                [number(system_id), number(layer_ids[base + suffix]), text(key),
                                 "Null", "Null"]))
    for key, name, *_ in GENERAL:
        lines.append(insert("tblLayerKey", key_columns,
                            ["Null", number(layer_ids[name]), text(key), "Null", "Null"]))

    lines += ["", "-- Text styles."]
    for key, style, height, factor in TEXT_STYLES:
        lines.append(insert("tblTextStyle",
                            ["sKey", "sStyleName", "dHeight", "dScaleFactor",
                             "ixMasterDatabase", "iMasterDatabaseIndex"],
                            [text(key), text(style), number(height), number(factor),
                             "Null", "Null"]))

    lines += ["", "-- Label groups, each in its display order."]
    for group, labels in LABEL_GROUPS.items():
        for order, (key, label, width, justification, shown) in enumerate(labels, 1):
            lines.append(insert("tblLabelGroup",
                                ["sGroup", "sKey", "sLabel", "dWidth", "sJustification",
                                 "bDisplay", "iSortOrder"],
                                [text(group), text(key), text(label), number(width),
                                 text(justification), number(shown), number(order)]))
    out.write("\n".join(lines) + "\n")


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    target = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "data.sql")
    with open(target, "w", encoding="utf-8", newline="\n") as out:
        write(out)


if __name__ == "__main__":
    main()
