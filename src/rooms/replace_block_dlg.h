// CReplaceBlockDlg, "Replace Block Dialog": which block replaces which, the
// expressions that make the new block's attribute texts from the old
// block's, and whether the old references go.
//
// As a model, fields in order (the two attribute lists only once their block
// is chosen and has attribute definitions):
//   "&Old block name"              choice of the drawing's block names
//   "&New block name"              choice of the drawing's block names
//   "A&ttribute name"              choice of the new block's attribute tags
//   "&Source of attributes"        choice of the old block's tags (the
//                                  expression builder): a choice appends
//                                  "%TAG%" to the expression
//   "Attribute &expression"        text
//   "Applied expression list"      shown only: "TAG=expression" pairs joined
//                                  by "; "
//   "Remove old block references"  Yes/No
// Buttons: "&Replace" (index 0, the default; closes with the choices),
// "&Apply expression" (stays), "Cancel".
//
// "&Apply expression": without a new block and an attribute tag, nothing
// happens; an empty expression shows "Attribute expression should not to be
// empty." (exclamation icon) and changes nothing; otherwise the pair for
// the tag is replaced, or added at the end.
#ifndef FLOORXPORT_ROOMS_REPLACE_BLOCK_DLG_H_
#define FLOORXPORT_ROOMS_REPLACE_BLOCK_DLG_H_

#include <string>
#include <vector>

#include "host/dialog.h"
#include "rooms/replace_block.h"

class AcDbDatabase;

namespace fx::rooms {

inline constexpr const char* kReplaceBlockCaption = "Replace Block Dialog";
inline constexpr const char* kEmptyExpressionMessage =
    "Attribute expression should not to be empty.";
// The texts are kept exactly as the product has them (grave accent, spelling).
inline constexpr const char* kNoDatabaseMessage = "\nError: Can`t acess drawning database!";
inline constexpr const char* kNameNotAddedMessage = "Error: Can`t append block name to Combo Box";
inline constexpr const char* kQuoteMarkerHint = "Attribute quote marker - %";
inline constexpr const char* kQuotingExampleHint = "Attribute quoting example: %attribute_name%";

// The tags of the attribute definitions of block `block_name` in its entity
// order; empty when the block is missing or the database is null.
std::vector<std::string> BlockAttributeTags(AcDbDatabase* database, const std::string& block_name);

class CReplaceBlockDlg : public fx::DialogModel {
 public:
  enum Button { kReplace = 0, kApplyExpression = 1, kCancel = 2 };

  // Fills the block lists from `database`'s block table; a null database
  // prints kNoDatabaseMessage and leaves them empty. `database` must outlive
  // the dialog.
  explicit CReplaceBlockDlg(AcDbDatabase* database);

  std::string title() const override { return kReplaceBlockCaption; }
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override {
    return {"&Replace", "&Apply expression", "Cancel"};
  }
  DialogAction Press(size_t index) override;

  const std::vector<std::string>& blockNames() const { return block_names_; }
  const std::vector<std::string>& newBlockTags() const { return new_tags_; }
  const std::vector<std::string>& oldBlockTags() const { return old_tags_; }
  const ReplaceBlockOptions& options() const { return options_; }
  const std::string& expression() const { return expression_; }

  // The "&Apply expression" button.
  void ApplyExpressionButton();

 private:
  enum class Field { kOldBlock, kNewBlock, kAttribute, kSource, kExpression, kApplied, kRemoveOld };
  std::vector<Field> shownFields() const;

  AcDbDatabase* database_;
  std::vector<std::string> block_names_;
  std::vector<std::string> old_tags_;
  std::vector<std::string> new_tags_;
  std::string attribute_;  // the chosen tag of the new block
  std::string source_;     // the old block's tag chosen last
  std::string expression_;
  ReplaceBlockOptions options_;
};

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_REPLACE_BLOCK_DLG_H_
