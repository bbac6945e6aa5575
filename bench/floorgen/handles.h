// Handles of the drawing's objects.
//
// Objects that other objects refer to before they are written (tables, their
// records, blocks, layouts, dictionaries) get fixed handles up front; all
// other entities take the following handles in the order they are written.
// The drawing's handle seed is the handle after the last one taken.
#pragma once

#include <array>

#include "blocks.h"
#include "dxf_stream.h"
#include "layers.h"

namespace floorgen {

class HandleAllocator {
 public:
  Handle Next() { return next_++; }
  Handle Seed() const { return next_; }

 private:
  Handle next_ = 1;
};

struct BlockHandles {
  Handle record = 0;
  Handle begin = 0;  // BLOCK entity
  Handle end = 0;    // ENDBLK entity
};

struct FixedHandles {
  // Allocates every fixed handle; must be the allocator's first use.
  static FixedHandles Allocate(HandleAllocator& allocator);

  Handle vport_table = 0;
  Handle ltype_table = 0;
  Handle layer_table = 0;
  Handle style_table = 0;
  Handle view_table = 0;
  Handle ucs_table = 0;
  Handle appid_table = 0;
  Handle dimstyle_table = 0;
  Handle block_record_table = 0;

  Handle active_vport = 0;
  Handle ltype_by_block = 0;
  Handle ltype_by_layer = 0;
  Handle ltype_continuous = 0;
  Handle ltype_dashed = 0;
  std::array<Handle, kLayers.size()> layers{};
  Handle standard_style = 0;
  Handle acad_appid = 0;
  Handle standard_dimstyle = 0;
  std::array<BlockHandles, kBlockCount> blocks{};

  Handle root_dictionary = 0;
  Handle group_dictionary = 0;
  Handle layout_dictionary = 0;
  Handle mline_style_dictionary = 0;
  Handle plot_settings_dictionary = 0;
  Handle plot_style_dictionary = 0;  // dictionary with default
  Handle normal_plot_style = 0;      // its placeholder entry
  Handle model_layout = 0;
  Handle paper_layout = 0;
  Handle standard_mline_style = 0;
};

}  // namespace floorgen
