// Measures the SVG renderer on drawings: the time to render model space to
// an SVG document (frame: the model-space extents) and the size of its text,
// with block optimisation on and off. Loading is not counted.
//
//   svg_render_bench [--iterations N] [--out DIR] FILE...
//
// With --out, each rendering is also saved as DIR/NAME.blocks.svg or
// DIR/NAME.inline.svg.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "host/database.h"
#include "host/dxf/drawing_io.h"
#include "svg/pv_svg_world_draw.h"
#include "svg/render_model_space.h"
#include "svg/svg_document.h"
#include "svg/svg_save.h"

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

struct Args {
  int iterations = 3;
  std::string out;
  std::vector<std::string> files;
};

bool Parse(int argc, char** argv, Args& args) {
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--iterations" && i + 1 < argc) args.iterations = std::max(1, std::atoi(argv[++i]));
    else if (arg == "--out" && i + 1 < argc) args.out = argv[++i];
    else if (arg.starts_with("--")) return false;
    else args.files.push_back(arg);
  }
  return !args.files.empty();
}

}  // namespace

int main(int argc, char** argv) {
  Args args;
  if (!Parse(argc, argv, args)) {
    std::fprintf(stderr, "usage: svg_render_bench [--iterations N] [--out DIR] FILE...\n");
    return 2;
  }
  std::printf("%-40s %-7s %9s %12s %10s %8s\n", "drawing", "blocks", "render ms", "svg bytes", "elements", "defs");
  for (const std::string& path : args.files) {
    std::string error;
    std::unique_ptr<AcDbDatabase> db = fx::dxf::ReadDrawing(path, &error);
    if (db == nullptr) {
      std::fprintf(stderr, "%s\n", error.c_str());
      return 1;
    }
    fx::svg::Frame frame;
    if (!fx::svg::ModelSpaceExtents(db.get(), frame)) {
      std::fprintf(stderr, "%s: no extents\n", path.c_str());
      continue;
    }
    const std::string name = std::filesystem::path(path).stem().string();
    for (bool blocks : {true, false}) {
      fx::svg::SvgOptions options;
      options.block_optimization = blocks;
      options.program_attributes = true;
      options.layer_id = [](AcDbObjectId layer) { return std::optional<long>(static_cast<long>(layer.handle().value())); };
      double best = 1e300;
      std::unique_ptr<fx::svg::SvgText> rendered;
      for (int i = 0; i < args.iterations; ++i) {
        const Clock::time_point start = Clock::now();
        rendered = fx::svg::RenderModelSpaceText(db.get(), frame, options);
        best = std::min(best, Seconds(start));
      }
      if (rendered == nullptr) return 1;
      const std::string text = rendered->Text();
      const std::unique_ptr<pugi::xml_document> document = rendered->Document();
      size_t elements = 0;
      struct Counter : pugi::xml_tree_walker {
        size_t* count;
        bool for_each(pugi::xml_node& node) override {
          if (node.type() == pugi::node_element) ++*count;
          return true;
        }
      } counter;
      counter.count = &elements;
      document->traverse(counter);
      size_t defs = 0;
      for (pugi::xml_node node : document->child("svg").child("defs").children("g")) (void)node, ++defs;
      std::printf("%-40s %-7s %9.1f %12zu %10zu %8zu\n", name.c_str(), blocks ? "on" : "off", best * 1000,
                  text.size(), elements, defs);
      if (!args.out.empty()) {
        const std::string out = args.out + "/" + name + (blocks ? ".blocks.svg" : ".inline.svg");
        if (!fx::svg::SaveSvg(*rendered, out, &error)) std::fprintf(stderr, "%s\n", error.c_str());
      }
    }
  }
  return 0;
}
