// What the studio checks before anything reaches the host: who may send a
// request, and whether a field's value suits its kind.
#include <gtest/gtest.h>

#include "studio/field_values.h"
#include "studio/request_guard.h"

namespace fx::studio {
namespace {

TEST(RequestGuard, OnlyThePageOfThisStudioWithItsTokenPasses) {
  const std::string token = NewToken();
  ASSERT_EQ(token.size(), 32u);
  EXPECT_EQ(token.find_first_not_of("0123456789abcdef"), std::string::npos);
  EXPECT_NE(NewToken(), token);
  struct Case {
    RequestFacts request;
    const char* refusal;
  };
  const Case cases[] = {
      {{token, "127.0.0.1:8123", ""}, ""},
      {{token, "localhost:8123", "http://localhost:8123"}, ""},
      {{"", "127.0.0.1:8123", ""}, "wrong token"},
      {{token.substr(0, 31) + (token.back() == '0' ? "1" : "0"), "127.0.0.1:8123", ""}, "wrong token"},
      {{token + "0", "127.0.0.1:8123", ""}, "wrong token"},
      {{token, "127.0.0.1:8124", ""}, "foreign Host"},
      {{token, "evil.example:8123", ""}, "foreign Host"},  // a name rebound to 127.0.0.1
      {{token, "127.0.0.1", ""}, "foreign Host"},
      {{token, "127.0.0.1:8123", "http://evil.example"}, "foreign Origin"},
      {{token, "127.0.0.1:8123", "http://localhost:8123"}, "foreign Origin"},  // another page's origin
      {{token, "127.0.0.1:8123", "null"}, "foreign Origin"},
      {{token, "127.0.0.1:8123", "https://127.0.0.1:8123"}, "foreign Origin"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(RefusalReason(c.request, token, 8123), c.refusal)
        << c.request.token << " " << c.request.host << " " << c.request.origin;
  }
  // A studio without a token refuses everything.
  EXPECT_EQ(RefusalReason({"", "127.0.0.1:8123", ""}, "", 8123), "wrong token");
}

TEST(FieldValues, EachKindTakesOnlyItsValues) {
  auto field = [](DialogField::Kind kind, std::vector<std::string> items = {}) {
    DialogField made;
    made.kind = kind;
    made.items = std::move(items);
    return made;
  };
  struct Case {
    DialogField field;
    std::string value;
    std::string error;
  };
  const Case cases[] = {
      {field(DialogField::kText, {"A"}), "typed, not an item", ""},
      {field(DialogField::kPassword), "", ""},
      {field(DialogField::kInteger), "-42", ""},
      {field(DialogField::kInteger), "", "Requires an integer value."},
      {field(DialogField::kInteger), "4.5", "Requires an integer value."},
      {field(DialogField::kInteger), "99999999999999999999", "Requires an integer value."},
      {field(DialogField::kChoice, {"Blocks", "Texts"}), "Texts", ""},
      {field(DialogField::kChoice, {"Blocks", "Texts"}), "texts", "Invalid option keyword."},
      {field(DialogField::kCheck), "No", ""},
      {field(DialogField::kCheck), "yes", "Requires Yes or No."},
      {field(DialogField::kList, {"A", "B C"}), "", ""},
      {field(DialogField::kList, {"A", "B C"}), "B C,A", ""},
      {field(DialogField::kList, {"A", "B C"}), "A,", "No item \"\"."},
      {field(DialogField::kList, {"A", "B C"}), "A,D", "No item \"D\"."},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CheckFieldValue(c.field, c.value), c.error) << FieldKindName(c.field.kind) << " " << c.value;
  }
  DialogField caption = field(DialogField::kText);
  caption.shown_only = true;
  EXPECT_NE(CheckFieldValue(caption, "x"), "");
}

}  // namespace
}  // namespace fx::studio
