// The editor: the command line (messages, questions, keyword input), host
// commands run with answers, message boxes and the status-bar progress meter.
// Plug-in code never prints, prompts or exits by itself: all of it goes
// through these functions, which each host implements.
#ifndef FLOORXPORT_HOST_EDITOR_H_
#define FLOORXPORT_HOST_EDITOR_H_

#include <cstddef>

#include "host/resbuf.h"

// Prints to the command line; printf format, UTF-8. Returns the characters written.
int acutPrintf(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Reads a string answer. With `cronly` non-zero blanks belong to the answer
// and only the line end ends it; otherwise a blank ends it too. RTNORM, RTCAN
// (cancelled or no more input), or RTINPUTTRUNCATED when the answer did not
// fit in `size` characters including the terminating NUL.
int acedGetString(int cronly, const char* prompt, char* result, size_t size);

// Keyword input: acedInitGet sets the keywords ("Yes No") for the next
// acedGetKword, which answers RTNORM with the full keyword matched by an
// unambiguous, case-insensitive prefix, RTNONE for an empty answer when
// RSG_NONULL was not given, RTCAN when cancelled.
constexpr int RSG_NONULL = 1;
int acedInitGet(int flags, const char* keywords);
int acedGetKword(const char* prompt, char* result, size_t size);

// Reads a point ("x,y" or "x,y,z"); `base` may be null.
int acedGetPoint(const ads_point base, const char* prompt, ads_point result);

// Runs a host command with its answers, given as (type, value) pairs ended by
// RTNONE: RTSTR with a `const char*` (an empty string stands for Enter),
// RTENAME with an `ads_name`, RTREAL with a double, RTSHORT with an int,
// RTPOINT/RT3DPOINT with an `ads_point`. RTNORM when the command ran to its
// end, RTERROR when it is unknown or failed, RTCAN when it was cancelled.
int acedCommandS(int rtype, ...);

// System variables, by name in any case ("INSUNITS", "cmdecho"). Those of
// the drawing (INSUNITS, LTSCALE, EXTMIN, ...) belong to the current
// document; the editor's own (CMDECHO, ...) to the session. acedGetVar fills
// `result` (restype and resval; rbnext is left alone) and returns RTNORM,
// or RTERROR for an unknown name or a drawing variable when no drawing is
// open. acedSetVar returns RTNORM, RTERROR as acedGetVar, or RTREJ when the
// variable is read-only or the value is refused (wrong type, out of range).
// Integers are RTSHORT, reals RTREAL (an RTSHORT is taken too), points
// RT3DPOINT.
int acedGetVar(const char* name, resbuf* result);
int acedSetVar(const char* name, const resbuf* value);

// Converts `point` from one coordinate system to another. `from` and `to`
// are RTSHORT codes: 0 world, 1 the current user system (the drawing's
// UCS), 2 the display system of the active viewport (origin at the view's
// target, Z along its view direction, X and Y turned by its twist); or
// RT3DPOINT, the object system of that extrusion direction. With `disp`
// non-zero the point is a displacement: it is turned, not moved. RTNORM, or
// RTERROR for another code, a zero extrusion, or the display system of a
// drawing without an active viewport.
int acedTrans(const ads_point point, const resbuf* from, const resbuf* to, int disp, ads_point result);

// Message boxes. The answer comes from the user, or in a batch run from the
// host's answer policy; either way the host shows the question and answer.
constexpr unsigned MB_OK = 0x0;
constexpr unsigned MB_OKCANCEL = 0x1;
constexpr unsigned MB_YESNOCANCEL = 0x3;
constexpr unsigned MB_YESNO = 0x4;
constexpr unsigned MB_ICONERROR = 0x10;
constexpr unsigned MB_ICONQUESTION = 0x20;
constexpr unsigned MB_ICONWARNING = 0x30;
constexpr unsigned MB_ICONEXCLAMATION = 0x30;
constexpr unsigned MB_ICONINFORMATION = 0x40;
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;
int acedMessageBox(const char* text, const char* caption, unsigned type);

// The status-bar progress meter: a label and a range, then positions.
int acedSetStatusBarProgressMeter(const char* label, int min_pos, int max_pos);
int acedSetStatusBarProgressMeterPos(int pos);
void acedRestoreStatusBar();

#endif  // FLOORXPORT_HOST_EDITOR_H_
