#include "handles.h"

namespace floorgen {

FixedHandles FixedHandles::Allocate(HandleAllocator& allocator) {
  FixedHandles h;
  for (Handle* table : {&h.vport_table, &h.ltype_table, &h.layer_table, &h.style_table, &h.view_table,
                        &h.ucs_table, &h.appid_table, &h.dimstyle_table, &h.block_record_table}) {
    *table = allocator.Next();
  }
  for (Handle* record : {&h.active_vport, &h.ltype_by_block, &h.ltype_by_layer, &h.ltype_continuous,
                         &h.ltype_dashed, &h.standard_style, &h.acad_appid, &h.standard_dimstyle}) {
    *record = allocator.Next();
  }
  for (Handle& layer : h.layers) layer = allocator.Next();
  for (BlockHandles& block : h.blocks) {
    block.record = allocator.Next();
    block.begin = allocator.Next();
    block.end = allocator.Next();
  }
  for (Handle* object : {&h.root_dictionary, &h.group_dictionary, &h.layout_dictionary,
                         &h.mline_style_dictionary, &h.plot_settings_dictionary, &h.plot_style_dictionary,
                         &h.normal_plot_style, &h.model_layout, &h.paper_layout, &h.standard_mline_style}) {
    *object = allocator.Next();
  }
  return h;
}

}  // namespace floorgen
