// The system variables of the console editor, behind acedGetVar and
// acedSetVar (host/editor.h, where the calls' contracts are), and where each
// lives:
//
//   the current drawing's header, as the file holds them:
//     INSUNITS (0-20), LUNITS (1-5), LUPREC (0-8), LTSCALE (above 0);
//     read-only: EXTMIN, EXTMAX, UCSORG, UCSXDIR, UCSYDIR;
//   the session: CMDECHO (0 or 1, 1 at the start), whether commands run by
//     acedCommandS show their prompts and answers (Console::commandEcho).
//
// A header variable the file lacks reads as the editor's default for a new
// drawing; setting it adds it to the header and marks the drawing changed.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_SYSTEM_VARIABLES_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_SYSTEM_VARIABLES_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include "host/resbuf.h"

namespace fx::console {

int GetSystemVariable(const char* name, resbuf* result);
int SetSystemVariable(const char* name, const resbuf* value);

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_SYSTEM_VARIABLES_H_
