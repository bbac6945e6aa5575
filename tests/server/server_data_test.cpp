// The drawing's server record in real DXF files: written, saved, read back
// here and by ezdxf; an equal write leaves the drawing as it was.
#include "server/server_data.h"
#include "server/download_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "host/database.h"
#include "host/dxf/drawing_io.h"
#include "host/dxf/imp_database.h"
#include "program_runner.h"
#include "rooms/doc_data.h"
#include "test_folder.h"

namespace fx::server {
namespace {

using fx::cli_test::ReadFile;
using fx::cli_test::RunProgram;

const std::string kPlan = std::string(FX_TEST_DATA_DIR) + "/rooms_ui/rooms_base.dxf";

// The record's values as another DXF reader sees them, one CODE=VALUE a line.
const char kEzdxfDump[] = R"py(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
for tag in doc.rootdict["PLANVAULT_DICT_3287"]["PLANVAULT_SERVER_DATA"].tags:
    print(f"{tag.code}={tag.value}")
)py";

class ServerDataTest : public ::testing::Test {
 protected:
  void TearDown() override {
    fx::dxf::SetWorkingDatabase(nullptr);
    db_.reset();
  }
  AcDbDatabase* Open(const std::string& path) {
    fx::dxf::SetWorkingDatabase(nullptr);
    std::string error;
    db_ = fx::dxf::ReadDrawing(path, &error);
    EXPECT_NE(db_, nullptr) << error;
    fx::dxf::SetWorkingDatabase(db_.get());
    return db_.get();
  }
  bool Modified() const { return db_->impl()->modified(); }

  fx::testing::TestFolder folder_{"fx-server"};
  const std::string dir_ = folder_.path().string();
  std::unique_ptr<AcDbDatabase> db_;
};

// A drawing without the record reads empty and stays unchanged; written,
// saved and read back here and by ezdxf; an equal write changes nothing.
TEST_F(ServerDataTest, WrittenSavedAndReadBackHereAndByEzdxf) {
  const std::string saved = dir_ + "/linked.dxf";
  {
    AcDbDatabase* db = Open(kPlan);
    ASSERT_NE(db, nullptr);
    EXPECT_FALSE(ReadServerData(db).read);
    EXPECT_EQ(ReadServerData(db).floor_id, -1);
    EXPECT_FALSE(rooms::HasServerFloorAssociation(db));
    EXPECT_FALSE(Modified());
    ASSERT_EQ(WriteServerData({70000, 12, "https://vantory.example/", false}, db), Acad::eOk);
    EXPECT_TRUE(Modified());
    EXPECT_TRUE(rooms::HasServerFloorAssociation(db));
    ASSERT_EQ(db->saveAs(saved.c_str()), Acad::eOk);
  }
  AcDbDatabase* db = Open(saved);
  ASSERT_NE(db, nullptr);
  const ServerData data = ReadServerData(db);
  EXPECT_TRUE(data.read);
  EXPECT_EQ(data.first_id, 70000);
  EXPECT_EQ(data.floor_id, 12);
  EXPECT_EQ(data.server, "https://vantory.example/");

  const cli_test::ProgramResult dump =
      RunProgram(FX_SYSTEM_PYTHON, {"-c", kEzdxfDump, saved}, dir_);
  ASSERT_EQ(dump.exit_status, 0) << dump.err;
  EXPECT_EQ(dump.out, "1000=1.0\n1000=https://vantory.example/\n1071=70000\n1071=12\n");

  // Equal values: nothing written, and a save reproduces the file exactly
  // (saved without a new update time, which every save would stamp).
  ASSERT_EQ(WriteServerData({70000, 12, "https://vantory.example/", false}, db), Acad::eOk);
  EXPECT_FALSE(Modified());
  const std::string again = dir_ + "/again.dxf";
  std::string error;
  ASSERT_EQ(db->impl()->Save(again, /*stamp_update_time=*/false, &error), Acad::eOk) << error;
  EXPECT_TRUE(ReadFile(again) == ReadFile(saved));  // not printed: whole drawings

  // Another floor replaces the record.
  ASSERT_EQ(WriteServerData({70000, 13, "https://vantory.example/", false}, db), Acad::eOk);
  EXPECT_TRUE(Modified());
  EXPECT_EQ(ReadServerData(db).floor_id, 13);
}

// Building and floor names a hostile or broken server might send: the
// downloaded drawing's name is always one plain file inside the folder.
TEST(DownloadFileName, HostileNamesStayInTheirFolder) {
  const std::pair<std::string, std::string> names[] = {
      {"..", ".."},           {"../../etc", "passwd"},   {"/abs", "/root/.ssh/x"}, {"a\\..\\b", "c:d"},
      {".hidden", ". ."},     {"", ""},                  {"\xff\xfe", "\x01\n\x7f"},
      {std::string(500, 'x') + "/..", "\xe2\x80"},
  };
  const std::filesystem::path folder = "/srv/downloads";
  for (const auto& [building, floor] : names) {
    const std::string name = DownloadFileName(building, floor, "dxf");
    SCOPED_TRACE(name);
    EXPECT_EQ(name.find_first_of(std::string("/\\\0", 3)), std::string::npos);
    EXPECT_NE(name.front(), '.');
    const std::filesystem::path target = (folder / name).lexically_normal();
    EXPECT_EQ(target.parent_path(), folder);
    EXPECT_EQ(target.filename().string(), name);
    EXPECT_LE(name.size(), 210u);
  }
}

}  // namespace
}  // namespace fx::server
