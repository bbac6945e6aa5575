// The drawing clean-up commands of the headless host, registered by the
// console beside its own host commands. Each works on the working database
// and prompts through the host's editor functions.
//
//   AUDIT     "Fix any errors detected? [Yes/No] <N>:" then checks the
//             database (see audit.h), prints a line per problem and
//             "N errors found, M fixed." Yes repairs what it found.
//   PURGE     (also -PURGE) "Enter type of unused objects to purge
//             [Blocks/LAyers/LTypes/STyles/All]:", "Enter name(s) to purge
//             <*>:", "Verify each name to be purged? [Yes/No] <Y>:" (and with
//             Yes a question per name); prints "Deleting layer "X"." per
//             record and a count per kind (see purge.h).
//   OVERKILL  (also -OVERKILL) "Select objects:" (All: everything in model
//             space; a handle in hexadecimal: that entity; an empty answer
//             ends the selection), then "Enter an option [Tolerance/Done]
//             <Done>:"; prints "N duplicate(s) deleted, M overlapping
//             object(s) or segment(s) deleted" (see overkill.h).
//
// Without a drawing each says "No drawing is open." and fails.
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_CLEANUP_COMMANDS_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_CLEANUP_COMMANDS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

class AcEdCommandStack;

namespace fx::cleanup {

// Marks the running command as failed; the host that registers the
// commands provides it (the console's command runner).
using FailCommandFunction = void (*)();

// Adds AUDIT, PURGE and OVERKILL to `stack` under `group`.
void RegisterCleanupCommands(AcEdCommandStack& stack, const char* group, FailCommandFunction fail);

void AuditCommand();
void PurgeCommand();
void OverkillCommand();

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_CLEANUP_COMMANDS_H_
