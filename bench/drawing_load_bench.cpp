// Measures the headless host on one drawing: reading it into a database
// (document and object index), walking model space with every entity's
// extents, and saving it whole; with peak memory relative to the file size.
// Then, without a drawing, building lightweight polylines a vertex at a time
// and copying them the same way (reading every vertex back): linear in the
// vertices, so the rate stays the same from 1,000 to 100,000 vertices.
//
//   drawing_load_bench FILE [ITERATIONS]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "host/database.h"
#include "host/db_entities.h"
#include "host/dxf/drawing_io.h"

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

// Peak resident memory of the process in bytes (VmHWM of /proc/self/status).
double PeakBytes() {
  std::ifstream status("/proc/self/status");
  std::string key;
  double kib = 0;
  while (status >> key) {
    if (key == "VmHWM:") {
      status >> kib;
      break;
    }
  }
  return kib * 1024;
}

// Opens every model-space entity for read and takes its extents; the entity count.
size_t WalkModelSpace(AcDbDatabase& db) {
  AcDbBlockTableRecord* model = nullptr;
  if (acdbOpenObject(model, db.modelSpaceId(), AcDb::kForRead) != Acad::eOk) return 0;
  std::vector<AcDbObjectId> ids = model->entityIds();
  model->close();
  for (AcDbObjectId id : ids) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    AcDbExtents extents;
    entity->getGeomExtents(extents);
    entity->close();
  }
  return ids.size();
}

// Builds a polyline of `vertices` a vertex at a time (every third with a
// bulge), then copies it vertex by vertex as an editor's copy does; seconds.
double BuildAndCopyPolyline(unsigned vertices) {
  const auto start = Clock::now();
  AcDbPolyline built;
  for (unsigned i = 0; i < vertices; ++i)
    built.addVertexAt(i, AcGePoint2d(i * 0.5, (i % 7) * 1.25), i % 3 == 0 ? 0.25 : 0);
  AcDbPolyline copy;
  for (unsigned i = 0; i < built.numVerts(); ++i) {
    AcGePoint2d point;
    double bulge = 0;
    built.getPointAt(i, point);
    built.getBulgeAt(i, bulge);
    copy.addVertexAt(i, point, bulge);
  }
  const double seconds = Seconds(start);
  if (copy.numVerts() != vertices) std::fprintf(stderr, "drawing_load_bench: the copy lost vertices\n");
  return seconds;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: drawing_load_bench FILE [ITERATIONS]\n");
    return 2;
  }
  const std::string path = argv[1];
  const int iterations = argc > 2 ? std::max(1, std::atoi(argv[2])) : 3;
  const double megabytes = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
  const std::string out = (std::filesystem::temp_directory_path() / "drawing_load_bench.dxf").string();

  double best_load = 1e300, best_walk = 1e300, best_save = 1e300;
  size_t entities = 0;
  for (int i = 0; i < iterations; ++i) {
    auto start = Clock::now();
    std::string error;
    auto db = fx::dxf::ReadDrawing(path, &error);
    if (!db) {
      std::fprintf(stderr, "drawing_load_bench: %s\n", error.c_str());
      return 1;
    }
    best_load = std::min(best_load, Seconds(start));
    start = Clock::now();
    entities = WalkModelSpace(*db);
    best_walk = std::min(best_walk, Seconds(start));
    start = Clock::now();
    if (db->saveAs(out.c_str()) != Acad::eOk) {
      std::fprintf(stderr, "drawing_load_bench: cannot save %s\n", out.c_str());
      return 1;
    }
    best_save = std::min(best_save, Seconds(start));
  }
  std::filesystem::remove(out);
  std::printf("%s: %.1f MB, %zu model-space entities\n", path.c_str(), megabytes, entities);
  std::printf("  read into a database  %8.3f s  %8.1f MB/s\n", best_load, megabytes / best_load);
  std::printf("  open all + extents    %8.3f s  %8.0f entities/s\n", best_walk, static_cast<double>(entities) / best_walk);
  std::printf("  save (atomic)         %8.3f s  %8.1f MB/s\n", best_save, megabytes / best_save);
  std::printf("  peak memory           %8.1f MB  %8.2f x file size\n", PeakBytes() / 1e6, PeakBytes() / 1e6 / megabytes);
  for (unsigned vertices : {1000u, 10000u, 100000u}) {
    double best = 1e300;
    for (int i = 0; i < iterations; ++i) best = std::min(best, BuildAndCopyPolyline(vertices));
    std::printf("  polyline built + copied a vertex at a time, %6u vertices  %8.3f s  %8.0f vertices/s\n", vertices,
                best, 2.0 * vertices / best);
  }
  return 0;
}
