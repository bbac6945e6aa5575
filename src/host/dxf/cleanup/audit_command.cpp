// AUDIT on the console: the question, a line per problem and the summary
// (see cleanup_commands.h).
#include <string>

#include "host/dxf/cleanup/audit.h"
#include "host/dxf/cleanup/cleanup_commands.h"
#include "host/dxf/cleanup/command_support.h"
#include "host/editor.h"

namespace fx::cleanup {

void AuditCommand() {
  AcDbImpDatabase* db = DrawingOrFail();
  if (db == nullptr) return;
  acedInitGet(0, "Yes No");
  char answer[16];
  int status = acedGetKword("\nFix any errors detected? [Yes/No] <N>: ", answer, sizeof answer);
  if (status != RTNORM && status != RTNONE) return;
  const bool fix = status == RTNORM && std::string(answer) == "Yes";
  const AuditResult result = Audit(*db, fix);
  for (const AuditProblem& problem : result.problems) {
    acutPrintf("\n%s%s%s.", problem.message.c_str(), problem.fixed ? ": " : "",
               problem.fixed ? problem.repair.c_str() : "");
  }
  acutPrintf("\n%s found, %d fixed.",
             Counted(static_cast<int>(result.problems.size()), "error", "errors").c_str(), result.fixed());
}

}  // namespace fx::cleanup
