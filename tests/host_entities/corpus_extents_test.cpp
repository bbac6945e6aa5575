// End-to-end: the extents of every geometric model-space entity of real
// drawings against ezdxf's (ezdxf_extents.py run by Debian's python3),
// handle by handle, within 1e-6 of the entity's size. Where ezdxf's own box
// is off (it measures Bezier approximations of arcs), its box of points on
// the true curves decides: ours must contain it and exceed it by no more
// than its flattening distance. Text is not compared: ezdxf measures it
// with fonts, the host by its width rule.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "entity_test_support.h"
#include "host/dxf/db_stub.h"
#include "host/dxf/drawing_io.h"

namespace {

constexpr double kRelative = 1e-6;
// The most differing entities one drawing sends back for a finer box.
constexpr size_t kMaxFineChecks = 2000;

std::filesystem::path CorpusDir() {
  const char* env = std::getenv("FX_CORPUS_DIR");
  return env != nullptr && *env != '\0' ? std::filesystem::path(env) : std::filesystem::path(FX_CORPUS_DIR);
}

struct Record {
  std::string handle, type, skip;
  bool has_box = false;
  double box[6] = {};
  double distance = 0;
};

// The value of `"key": "..."` in a line of the script's output.
std::string StringField(const std::string& line, const std::string& key) {
  std::string marker = "\"" + key + "\": \"";
  size_t at = line.find(marker);
  if (at == std::string::npos) return {};
  at += marker.size();
  return line.substr(at, line.find('"', at) - at);
}

// The six numbers of `"key": [...]`.
bool BoxField(const std::string& line, const std::string& key, double (&box)[6]) {
  size_t at = line.find("\"" + key + "\": [");
  if (at == std::string::npos) return false;
  const char* p = line.c_str() + line.find('[', at) + 1;
  for (double& value : box) {
    char* end = nullptr;
    value = std::strtod(p, &end);
    p = end + 1;  // past the comma
  }
  return true;
}

// Runs the script; false when it could not run (no python3 or no ezdxf).
bool RunScript(const std::string& arguments, std::vector<Record>& records) {
  std::string command = std::string(FX_SYSTEM_PYTHON) + " " + FX_EZDXF_EXTENTS + " " + arguments + " 2>/dev/null";
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return false;
  std::string output;
  char buffer[4096];
  while (size_t n = fread(buffer, 1, sizeof buffer, pipe)) output.append(buffer, n);
  if (pclose(pipe) != 0) return false;
  std::istringstream lines(output);
  for (std::string line; std::getline(lines, line);) {
    Record record;
    record.handle = StringField(line, "handle");
    record.type = StringField(line, "type");
    record.skip = StringField(line, "skip");
    record.has_box = BoxField(line, "box", record.box) || BoxField(line, "fine", record.box);
    size_t at = line.find("\"distance\": ");
    if (at != std::string::npos) record.distance = std::strtod(line.c_str() + at + 12, nullptr);
    records.push_back(record);
  }
  return true;
}

double Size(const double (&box)[6]) {
  return std::hypot(box[3] - box[0], box[4] - box[1], box[5] - box[2]);
}

void Corners(const AcDbExtents& extents, double (&out)[6]) {
  const AcGePoint3d& lo = extents.minPoint();
  const AcGePoint3d& hi = extents.maxPoint();
  double values[6] = {lo.x, lo.y, lo.z, hi.x, hi.y, hi.z};
  std::copy(values, values + 6, out);
}

// The largest coordinate difference of two boxes relative to the size of
// the reference (a point's "size" is 1e-9 of its distance from the origin).
double RelativeDifference(const double (&ours)[6], const double (&reference)[6]) {
  double scale = Size(reference);
  for (double v : reference) scale = std::max(scale, std::abs(v) * 1e-9);
  scale = std::max(scale, 1e-300);
  double worst = 0;
  for (int i = 0; i < 6; ++i) worst = std::max(worst, std::abs(ours[i] - reference[i]) / scale);
  return worst;
}

// Whether `ours` contains the box of points on the true curves and exceeds
// it by at most the flattening distance (plus the comparison tolerance).
bool AgreesWithFineBox(const double (&ours)[6], const Record& fine) {
  double slack = kRelative * std::max(Size(fine.box), 1e-9);
  for (int i = 0; i < 3; ++i) {
    if (ours[i] > fine.box[i] + slack || ours[i] < fine.box[i] - fine.distance - slack) return false;
    if (ours[i + 3] < fine.box[i + 3] - slack || ours[i + 3] > fine.box[i + 3] + fine.distance + slack)
      return false;
  }
  return true;
}

std::string Describe(const double (&box)[6]) {
  char text[256];
  std::snprintf(text, sizeof text, "(%.9g %.9g %.9g)-(%.9g %.9g %.9g)", box[0], box[1], box[2], box[3], box[4],
                box[5]);
  return text;
}

class CorpusExtentsTest : public ::testing::TestWithParam<std::string> {};

TEST_P(CorpusExtentsTest, MatchesEzdxf) {
  std::filesystem::path path = CorpusDir() / GetParam();
  if (!std::filesystem::exists(path)) {
    GTEST_SKIP() << path << " is absent";
  }
  std::vector<Record> records;
  if (!RunScript("'" + path.string() + "'", records)) {
    GTEST_SKIP() << "ezdxf is not available to " << FX_SYSTEM_PYTHON;
  }

  std::string error;
  std::unique_ptr<AcDbDatabase> db = fx::dxf::ReadDrawing(path.string(), &error);
  ASSERT_NE(db, nullptr) << error;

  struct Difference {
    const Record* record;
    double ours[6];
  };
  std::vector<Difference> differences;
  std::map<std::string, int> skipped;
  size_t compared = 0;
  double worst = 0;
  // Entities pair up by handle, or, in files before R13 that write none
  // (ezdxf and the host then make up different ones), by their order.
  std::vector<AcDbObjectId> ids = fx::testing::ModelSpaceIds(*db);
  bool by_handle = !ids.empty() && !ids[0].stub()->synthetic_handle;
  if (!by_handle) {
    ASSERT_EQ(ids.size(), records.size());
  }
  for (size_t i = 0; i < records.size(); ++i) {
    const Record& record = records[i];
    if (!record.has_box) {
      ++skipped[record.skip];
      continue;
    }
    AcDbObjectId id = by_handle ? AcDbObjectId() : ids[i];
    if (by_handle) {
      ASSERT_EQ(db->getAcDbObjectId(id, false, AcDbHandle(record.handle)), Acad::eOk) << record.handle;
    }
    AcDbEntityPointer entity(id, AcDb::kForRead);
    ASSERT_EQ(entity.openStatus(), Acad::eOk) << record.handle;
    AcDbExtents extents;
    ASSERT_EQ(entity->getGeomExtents(extents), Acad::eOk) << record.type << " " << record.handle;
    Difference difference{&record, {}};
    Corners(extents, difference.ours);
    ++compared;
    double relative = RelativeDifference(difference.ours, record.box);
    worst = std::max(worst, relative);
    if (relative > kRelative) differences.push_back(difference);
  }

  // The differing entities, measured again on ezdxf's true curves.
  std::string handles;
  size_t checked = std::min(differences.size(), kMaxFineChecks);
  for (size_t i = 0; i < checked; ++i) handles += " " + differences[i].record->handle;
  std::vector<Record> fine;
  if (checked > 0) {
    ASSERT_TRUE(RunScript("'" + path.string() + "'" + handles, fine));
  }
  ASSERT_EQ(fine.size(), checked);
  std::map<std::string, int> explained;
  double worst_fine = 0;
  for (size_t i = 0; i < checked; ++i) {
    const Difference& d = differences[i];
    ASSERT_TRUE(fine[i].has_box) << d.record->handle;
    bool agrees = AgreesWithFineBox(d.ours, fine[i]);
    worst_fine = std::max(worst_fine, RelativeDifference(d.ours, fine[i].box));
    if (agrees) {
      ++explained[d.record->type];
      if (explained[d.record->type] <= 3)
        std::cout << "  " << d.record->type << " " << d.record->handle << " differs from ezdxf's box by "
                  << RelativeDifference(d.ours, d.record->box) << " of its size, agrees on true curves\n";
      continue;
    }
    ADD_FAILURE() << d.record->type << " " << d.record->handle << ": host " << Describe(d.ours) << ", ezdxf "
                  << Describe(d.record->box) << ", on true curves " << Describe(fine[i].box);
  }

  std::cout << GetParam() << ": " << records.size() << " model-space entities (host: " << ids.size() << "), "
            << compared << " compared, max relative difference " << worst << "; "
            << differences.size() << " beyond " << kRelative << " (" << checked << " checked on true curves:";
  for (const auto& [type, count] : explained) std::cout << " " << type << " " << count;
  std::cout << ", max relative difference there " << worst_fine << "); skipped:";
  for (const auto& [reason, count] : skipped) std::cout << " " << reason << " " << count << ";";
  std::cout << "\n";
}

// Every drawing of the corpus (none when it is absent: the suite is then empty).
std::vector<std::string> CorpusDrawings() {
  std::vector<std::string> drawings;
  std::error_code error;
  if (!std::filesystem::is_directory(CorpusDir(), error)) return drawings;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(CorpusDir(), error)) {
    if (entry.is_regular_file() && entry.path().extension() == ".dxf")
      drawings.push_back(std::filesystem::relative(entry.path(), CorpusDir()).string());
  }
  std::sort(drawings.begin(), drawings.end());
  return drawings;
}

std::string TestName(const ::testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  for (char& c : name)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusExtentsTest, ::testing::ValuesIn(CorpusDrawings()), TestName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CorpusExtentsTest);

}  // namespace
