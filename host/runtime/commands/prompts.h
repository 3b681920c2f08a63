// The prompts and messages of the commands, as the host prints them at the command line
// (CMDECHO 1). One place, so that the families stay consistent.
#pragma once

namespace kelvo::commands::prompt {

// LINE
inline constexpr const wchar_t* kLineFirst = L"Specify first point:";
inline constexpr const wchar_t* kLineNext = L"Specify next point or [Undo]:";
inline constexpr const wchar_t* kLineNextClose = L"Specify next point or [Close/Undo]:";
inline constexpr const wchar_t* kAllUndone = L"All segments already undone.";
// CIRCLE
inline constexpr const wchar_t* kCircleCenter =
    L"Specify center point for circle or [3P/2P/Ttr (tan tan radius)]:";
inline constexpr const wchar_t* kCircleRadius = L"Specify radius of circle or [Diameter]";
inline constexpr const wchar_t* kCircleDiameter = L"Specify diameter of circle";
inline constexpr const wchar_t* kCircle2p1 = L"Specify first end point of circle's diameter:";
inline constexpr const wchar_t* kCircle2p2 = L"Specify second end point of circle's diameter:";
inline constexpr const wchar_t* kCircle3p1 = L"Specify first point on circle:";
inline constexpr const wchar_t* kCircle3p2 = L"Specify second point on circle:";
inline constexpr const wchar_t* kCircle3p3 = L"Specify third point on circle:";
// ARC
inline constexpr const wchar_t* kArcStart = L"Specify start point of arc or [Center]:";
inline constexpr const wchar_t* kArcSecond = L"Specify second point of arc or [Center/End]:";
inline constexpr const wchar_t* kArcEnd = L"Specify end point of arc:";
inline constexpr const wchar_t* kArcCenter = L"Specify center point of arc:";
inline constexpr const wchar_t* kArcStartOnly = L"Specify start point of arc:";
inline constexpr const wchar_t* kArcEndOrAngle =
    L"Specify end point of arc (hold Ctrl to switch direction) or [Angle/chord Length]:";
inline constexpr const wchar_t* kArcIncluded =
    L"Specify included angle (hold Ctrl to switch direction):";
inline constexpr const wchar_t* kArcChord =
    L"Specify length of chord (hold Ctrl to switch direction):";
inline constexpr const wchar_t* kArcCenterOr =
    L"Specify center point of arc (hold Ctrl to switch direction) or [Angle/Direction/Radius]:";
inline constexpr const wchar_t* kArcRadius =
    L"Specify radius of arc (hold Ctrl to switch direction):";
// PLINE
inline constexpr const wchar_t* kPlineStart = L"Specify start point:";
inline constexpr const wchar_t* kPlineNext =
    L"Specify next point or [Arc/Halfwidth/Length/Undo/Width]:";
inline constexpr const wchar_t* kPlineNextClose =
    L"Specify next point or [Arc/Close/Halfwidth/Length/Undo/Width]:";
inline constexpr const wchar_t* kPlineArc =
    L"Specify endpoint of arc (hold Ctrl to switch direction) or\n"
    L"[Angle/CEnter/CLose/Direction/Halfwidth/Line/Radius/Second pt/Undo/Width]:";
inline constexpr const wchar_t* kPlineLength = L"Specify length of line:";
// TEXT
inline constexpr const wchar_t* kTextStart = L"Specify start point of text or [Justify/Style]:";
inline constexpr const wchar_t* kTextJustify =
    L"Enter an option [Left/Center/Right/Align/Middle/Fit/TL/TC/TR/ML/MC/MR/BL/BC/BR]:";
inline constexpr const wchar_t* kTextRotation = L"Specify rotation angle of text";
inline constexpr const wchar_t* kTextEnter = L"Enter text:";
// -INSERT
inline constexpr const wchar_t* kInsertName = L"Enter block name or [?]:";
inline constexpr const wchar_t* kInsertPoint =
    L"Specify insertion point or [Basepoint/Scale/X/Y/Z/Rotate]:";
inline constexpr const wchar_t* kInsertX =
    L"Enter X scale factor, specify opposite corner, or [Corner/XYZ] <1>:";
inline constexpr const wchar_t* kInsertY = L"Enter Y scale factor <use X scale factor>:";
inline constexpr const wchar_t* kRotation = L"Specify rotation angle <0>:";
// edit commands
inline constexpr const wchar_t* kBasePoint = L"Specify base point:";
inline constexpr const wchar_t* kBaseOrDisplacement =
    L"Specify base point or [Displacement] <Displacement>:";
inline constexpr const wchar_t* kSecondPoint =
    L"Specify second point or <use first point as displacement>:";
inline constexpr const wchar_t* kDisplacement = L"Specify displacement <0.0000, 0.0000, 0.0000>:";
inline constexpr const wchar_t* kCopySettings = L"Current settings:  Copy mode = Multiple";
inline constexpr const wchar_t* kCopyBase =
    L"Specify base point or [Displacement/mOde] <Displacement>:";
inline constexpr const wchar_t* kCopyFirst =
    L"Specify second point or [Array] <use first point as displacement>:";
inline constexpr const wchar_t* kCopyNext = L"Specify second point or [Array/Exit/Undo] <Exit>:";
inline constexpr const wchar_t* kRotateSettings =
    L"Current positive angle in UCS:  ANGDIR=counterclockwise  ANGBASE=0";
inline constexpr const wchar_t* kRotateAngle = L"Specify rotation angle or [Copy/Reference] <0>:";
inline constexpr const wchar_t* kScaleFactor = L"Specify scale factor or [Copy/Reference]:";
inline constexpr const wchar_t* kMirror1 = L"Specify first point of mirror line:";
inline constexpr const wchar_t* kMirror2 = L"Specify second point of mirror line:";
inline constexpr const wchar_t* kMirrorErase = L"Erase source objects? [Yes/No] <No>:";
// -LAYER
inline constexpr const wchar_t* kLayerOption =
    L"Enter an option [?/Make/Set/New/Rename/ON/OFF/Color/Ltype/LWeight/TRansparency/MATerial/"
    L"Plot/Freeze/Thaw/LOck/Unlock/stAte/Description/rEconcile]:";
// -PURGE
inline constexpr const wchar_t* kPurgeType =
    L"Enter type of unused objects to purge [Blocks/LAyers/LTypes/textSTyles/Regapps/All]:";
inline constexpr const wchar_t* kPurgeNames = L"Enter name(s) to purge <*>:";
inline constexpr const wchar_t* kPurgeVerify = L"Verify each name to be purged? [Yes/No] <Y>:";
// UNDO
inline constexpr const wchar_t* kUndoSettings =
    L"Current settings: Auto = On, Control = All, Combine = Yes, Layer = Yes";
inline constexpr const wchar_t* kUndoOption =
    L"Enter the number of operations to undo or [Auto/Control/BEgin/End/Mark/Back] <1>:";
inline constexpr const wchar_t* kUndoEverything = L"This will undo everything. OK? [Yes/No] <Y>:";
// ZOOM
inline constexpr const wchar_t* kZoom =
    L"Specify corner of window, enter a scale factor (nX or nXP), or\n"
    L"[All/Center/Dynamic/Extents/Previous/Scale/Window/Object] <real time>:";

}  // namespace kelvo::commands::prompt
