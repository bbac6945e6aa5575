// PURGE: removes unreferenced blocks, layers, linetypes and text styles,
// over and over until nothing more can go (purging a block can free the
// layers and styles its entities used, and the blocks it inserted).
//
// Never purged: the layout blocks (*Model_Space, *Paper_Space...), layers
// "0" and "Defpoints", linetypes ByLayer, ByBlock and Continuous, the text
// style "Standard", records that belong to an external reference, and
// anything the current header values name ($CLAYER, $CELTYPE, $TEXTSTYLE,
// $DIMTXSTY, the dimension arrow blocks). What counts as a reference is
// described in references.h.
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_PURGE_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_PURGE_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <functional>
#include <string>
#include <vector>

class AcDbImpDatabase;

namespace fx::cleanup {

enum class PurgeKind { kBlock, kLayer, kLinetype, kTextStyle };

// "block", "layer", "linetype", "text style".
const char* PurgeKindName(PurgeKind kind);

struct PurgeOptions {
  bool blocks = true;
  bool layers = true;
  bool linetypes = true;
  bool text_styles = true;
  // Whether a name (UTF-8) may be purged; all names when empty.
  std::function<bool(const std::string& name)> matches;
  // Asked before each record goes; a record declined once is not asked
  // about again. All are purged when empty.
  std::function<bool(PurgeKind kind, const std::string& name)> confirm;
  // Told about each record that went, in order.
  std::function<void(PurgeKind kind, const std::string& name)> purged;
};

struct PurgeResult {
  int blocks = 0;
  int layers = 0;
  int linetypes = 0;
  int text_styles = 0;
  int passes = 0;  // passes over the drawing, the last one purging nothing
  int total() const { return blocks + layers + linetypes + text_styles; }
};

PurgeResult Purge(AcDbImpDatabase& db, const PurgeOptions& options);

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_PURGE_H_
