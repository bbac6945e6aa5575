// A session of the headless host: module messages and document, editor and
// save notifications in their order, documents and the working database.
// Drawings that fail to load or save are run end to end in tests/cli.
#include "host/dxf/console/host_session.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "console_fixture.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/module_registry.h"
#include "host/editor.h"

namespace fx::console {
namespace {

const std::string kSmallPlan = std::string(FX_CONSOLE_TEST_DATA) + "/small_plan.dxf";

std::vector<std::string> g_log;

struct LoggingReactors : AcEditorReactor, AcApDocManagerReactor {
  void endDwgOpen(const char* file_name, AcDbDatabase*) override {
    g_log.push_back(std::string("endDwgOpen ") +
                    (std::string(file_name) == kSmallPlan ? "plan" : file_name));
  }
  void beginClose(AcDbDatabase*) override { g_log.push_back("beginClose"); }
  void beginSave(AcDbDatabase*, const char*) override { g_log.push_back("beginSave"); }
  void saveComplete(AcDbDatabase*, const char*) override { g_log.push_back("saveComplete"); }
  void documentCreated(AcApDocument*) override { g_log.push_back("documentCreated"); }
  void documentToBeDestroyed(AcApDocument*) override { g_log.push_back("documentToBeDestroyed"); }
};
LoggingReactors g_reactors;

void Hello() { g_log.push_back("command HELLO"); }

AcRx::AppRetCode TestModule(AcRx::AppMsgCode message, void* packet) {
  EXPECT_NE(packet, nullptr);
  switch (message) {
    case AcRx::kInitAppMsg:
      g_log.push_back("kInitAppMsg");
      acedEditor()->addReactor(&g_reactors);
      acDocManagerPtr()->addReactor(&g_reactors);
      acedRegCmds()->addCommand("FX_TEST_MODULE", "HELLO", "HELLO", ACRX_CMD_MODAL, Hello);
      break;
    case AcRx::kUnloadAppMsg:
      g_log.push_back("kUnloadAppMsg");
      acedEditor()->removeReactor(&g_reactors);
      acDocManagerPtr()->removeReactor(&g_reactors);
      acedRegCmds()->removeGroup("FX_TEST_MODULE");
      break;
    case AcRx::kLoadDwgMsg: g_log.push_back("kLoadDwgMsg"); break;
    case AcRx::kUnloadDwgMsg: g_log.push_back("kUnloadDwgMsg"); break;
    default: g_log.push_back("message " + std::to_string(message)); break;
  }
  return AcRx::kRetOK;
}

AcRx::AppRetCode FailingModule(AcRx::AppMsgCode message, void*) {
  g_log.push_back("failing " + std::to_string(message));
  return message == AcRx::kInitAppMsg ? AcRx::kRetError : AcRx::kRetOK;
}

AcRx::AppRetCode ThrowingModule(AcRx::AppMsgCode, void*) { throw std::runtime_error("bad module"); }

class HostSessionTest : public ConsoleTest {
 protected:
  HostSessionTest() { g_log.clear(); }
  ModuleRegistry modules_;
};

TEST_F(HostSessionTest, NotificationsComeInTheEditorsOrder) {
  modules_.Register("test", TestModule);
  const std::string copy = ::testing::TempDir() + "host_session_test.dxf";
  {
    HostSession session(runner(), modules_);
    EXPECT_EQ(acDocManagerPtr()->curDocument(), nullptr);
    std::string error;
    ASSERT_TRUE(session.OpenDrawing(kSmallPlan, &error)) << error;
    AcApDocument* document = session.document();
    AcDbDatabase* database = document->database();
    EXPECT_EQ(acDocManagerPtr()->curDocument(), document);
    EXPECT_EQ(acDocManagerPtr()->document(database), document);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), database);
    EXPECT_EQ(document->fileName(), kSmallPlan);
    Run("HELLO");
    ASSERT_TRUE(session.Save(copy, &error)) << error;
    session.CloseDrawing();
    EXPECT_EQ(acDocManagerPtr()->curDocument(), nullptr);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
    EXPECT_EQ(modules_.loadedNames(), std::vector<std::string>{"test"});
  }
  EXPECT_TRUE(modules_.loadedNames().empty());
  EXPECT_EQ(g_log, (std::vector<std::string>{"kInitAppMsg", "documentCreated", "endDwgOpen plan",
                                             "kLoadDwgMsg", "command HELLO", "beginSave",
                                             "saveComplete", "beginClose", "kUnloadDwgMsg",
                                             "documentToBeDestroyed", "kUnloadAppMsg"}));
  EXPECT_EQ(acedRegCmds()->lookupGlobalCmd("HELLO"), nullptr);
  std::remove(copy.c_str());
}

TEST_F(HostSessionTest, AModuleThatFailsToLoadGetsNoMoreMessages) {
  modules_.Register("failing", FailingModule);
  modules_.Register("throwing", ThrowingModule);
  modules_.Register("test", TestModule);
  {
    HostSession session(runner(), modules_);
    std::string error;
    ASSERT_TRUE(session.OpenDrawing(kSmallPlan, &error)) << error;
  }
  EXPECT_EQ(g_log,
            (std::vector<std::string>{"failing 1", "kInitAppMsg", "documentCreated",
                                      "endDwgOpen plan", "kLoadDwgMsg", "beginClose",
                                      "kUnloadDwgMsg", "documentToBeDestroyed", "kUnloadAppMsg"}));
  EXPECT_EQ(terminal_.out,
            "\nModule failing could not be loaded."
            "\nModule throwing failed on message 1: bad module"
            "\nModule throwing could not be loaded.");
  EXPECT_EQ(runner().problems(), std::vector<std::string>{"a plug-in module could not be loaded"});
}

TEST_F(HostSessionTest, SendingToADocument) {
  HostSession session(runner(), modules_);
  EXPECT_EQ(acDocManagerPtr()->sendStringToExecute(nullptr, "UNITS "), Acad::eInvalidInput);
  std::string error;
  ASSERT_TRUE(session.OpenDrawing(kSmallPlan, &error)) << error;
  // The final blank ends the line; the one before it ends the command name.
  EXPECT_EQ(acDocManagerPtr()->sendStringToExecute(session.document(), "UNITS  "), Acad::eOk);
  EXPECT_EQ(acDocManagerPtr()->sendStringToExecute(nullptr, "UNITS 99 x 6 "), Acad::eOk);
  AcApDocument* stranger = reinterpret_cast<AcApDocument*>(&error);
  EXPECT_EQ(acDocManagerPtr()->sendStringToExecute(stranger, "UNITS "), Acad::eInvalidInput);
  EXPECT_EQ(
      Run(""),
      "\nCommand: UNITS\nInsertion units ($INSUNITS): 4 (Millimeters)\nEnter units (0-20) <4>: "
      "\nCommand: UNITS\nInsertion units ($INSUNITS): 4 (Millimeters)\nEnter units (0-20) <4>: 99"
      "\nRequires an integer between 0 and 20.\nEnter units (0-20) <4>: x"
      "\nRequires an integer between 0 and 20.\nEnter units (0-20) <4>: 6"
      "\nInsertion units set to 6 (Meters).\n");
  EXPECT_EQ(session.document()->database()->insunits(), AcDb::kUnitsMeters);
}

}  // namespace
}  // namespace fx::console
