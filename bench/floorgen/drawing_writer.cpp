#include "drawing_writer.h"

#include "annotations.h"
#include "dxf_entities.h"
#include "dxf_sections.h"
#include "handles.h"
#include "storey_entities.h"

namespace floorgen {

namespace {

// Writes the sections in order. Handles are taken in writing order, so the
// planning pass and the real pass hand out the same handles.
class DrawingSections {
 public:
  DrawingSections(DxfStream& out, const FloorLayout& layout, int rooms_per_storey)
      : out_(out),
        layout_(layout),
        rooms_per_storey_(rooms_per_storey),
        fixed_(FixedHandles::Allocate(allocator_)),
        model_space_(out, allocator_, fixed_.blocks[kModelSpaceBlock].record) {}

  void WriteUpToStoreys(const Box& extents) {
    WriteClassesSection(out_);
    WriteTablesSection(out_, fixed_, extents);
    WriteBlocksSection(out_, allocator_, fixed_, layout_);
    BeginSection(out_, "ENTITIES");
  }

  void WriteStorey(int storey) { floorgen::WriteStorey(model_space_, layout_, storey); }

  void WriteAfterStoreys(int storeys, const Box& extents) {
    WriteDrawingAnnotations(model_space_, layout_, storeys, rooms_per_storey_);
    EndSection(out_);
    WriteObjectsSection(out_, fixed_, extents);
    out_.Text(0, "EOF");
    out_.Flush();
  }

  Handle HandleSeed() const { return allocator_.Seed(); }

 private:
  DxfStream& out_;
  const FloorLayout& layout_;
  int rooms_per_storey_;
  HandleAllocator allocator_;
  FixedHandles fixed_;
  EntityWriter model_space_;
};

}  // namespace

DrawingPlan PlanDrawing(const FloorLayout& layout, int rooms_per_storey, std::uint64_t target_bytes) {
  DxfStream counter(nullptr);
  DrawingSections sections(counter, layout, rooms_per_storey);
  // Extents only change numbers, never handles, so the planning pass can use
  // those of one storey.
  const Box one_storey = DrawingExtents(layout, 1, rooms_per_storey);
  sections.WriteUpToStoreys(one_storey);
  DrawingPlan plan;
  plan.storeys = 0;
  std::uint64_t storey_bytes = 0;
  do {
    const std::uint64_t before = counter.ByteCount();
    sections.WriteStorey(plan.storeys++);
    storey_bytes += counter.ByteCount() - before;
  } while (storey_bytes < target_bytes);
  sections.WriteAfterStoreys(plan.storeys, one_storey);
  plan.handle_seed = sections.HandleSeed();
  plan.extents = DrawingExtents(layout, plan.storeys, rooms_per_storey);
  return plan;
}

void WriteDrawing(std::FILE* file, const FloorLayout& layout, int rooms_per_storey, const DrawingPlan& plan) {
  DxfStream out(file);
  WriteHeaderSection(out, plan.handle_seed, plan.extents);
  DrawingSections sections(out, layout, rooms_per_storey);
  sections.WriteUpToStoreys(plan.extents);
  for (int storey = 0; storey < plan.storeys; ++storey) sections.WriteStorey(storey);
  sections.WriteAfterStoreys(plan.storeys, plan.extents);
}

}  // namespace floorgen
