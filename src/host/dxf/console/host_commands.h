// Commands the headless host itself provides, registered in the command
// stack under kHostCommandGroup beside the plug-in's:
//
//   ZOOM   Extents: fits the active view to the model-space extents (and
//          brings $EXTMIN/$EXTMAX up to date, as the editor's does).
//          Object: fits it to the objects selected at "Select objects:",
//          each named by its handle in hexadecimal; an empty answer ends the
//          selection, as does the end of the answers once one is selected.
//          A drawing without an *ACTIVE viewport has no view: ZOOM says so
//          and ends normally.
//   UNITS  shows $INSUNITS and asks for a new value (0 to 20); an empty
//          answer keeps it.
//   AUDIT, PURGE, OVERKILL: see host/dxf/cleanup/cleanup_commands.h.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_HOST_COMMANDS_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_HOST_COMMANDS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

class AcEdCommandStack;

namespace fx::console {

inline constexpr const char* kHostCommandGroup = "FX_HOST";

void RegisterHostCommands(AcEdCommandStack& stack);
void RemoveHostCommands(AcEdCommandStack& stack);

void ZoomCommand();
void UnitsCommand();

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_HOST_COMMANDS_H_
