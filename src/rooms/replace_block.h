// Block replacement: every reference of one block swapped for a reference of
// another, in place, with the new attributes computed from the old ones by
// expressions ("%" + tag + "%" stands for the old attribute's text).
#ifndef FLOORXPORT_ROOMS_REPLACE_BLOCK_H_
#define FLOORXPORT_ROOMS_REPLACE_BLOCK_H_

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fx::rooms {

class CDocData;

// One applied expression: the new block's attribute tag and its expression.
struct AppliedExpression {
  std::string tag;
  std::string expression;
};

// What the dialog hands to the replacement.
struct ReplaceBlockOptions {
  std::string old_block;
  std::string new_block;
  std::vector<AppliedExpression> expressions;  // at most one per tag, in the order applied
  bool remove_old = false;
};

// The expression with the old attributes substituted: for each old
// attribute (tag, text), in order, every occurrence of "%" + tag + "%" in
// the text so far becomes the attribute's text. Tags match without regard to
// ASCII case, as the host compares tags. A pattern of a tag the old reference
// lacks stays as written, percent signs included.
std::string ApplyExpression(std::string_view expression,
                            const std::vector<std::pair<std::string, std::string>>& old_attributes);

// The expression applied for `tag` (compared without regard to ASCII case),
// or null.
const AppliedExpression* FindExpression(const std::vector<AppliedExpression>& expressions,
                                        std::string_view tag);

// Replaces every direct reference of options.old_block by a reference of
// options.new_block, in the same owner block, with the same position,
// rotation and normal, scale 1 whatever the old one had (kept so), and the
// old one's general properties (layer, colour, linetype, ...). Its
// attributes are made from the new block's attribute definitions, in their
// order: their properties, texts from the applied expressions (empty
// without one), moved by the new reference's block transform. With
// remove_old, the old reference is erased.
// A block name that is not found ends it (CDocData::GetBlockID reports it);
// a reference that cannot be opened is skipped. Returns the number of
// references made.
size_t ReplaceBlockReferences(CDocData& data, const ReplaceBlockOptions& options);

// The command vantoryReplaceBlock: the dialog CReplaceBlockDlg, then the
// replacement when it was closed with "&Replace".
void ReplaceBlock();

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_REPLACE_BLOCK_H_
