// MTEXT: location (10, world coordinates), height (40), reference width (41;
// 0 for no wrapping), attachment (71), contents (3 chunks then 1), style
// (7), normal (210), direction (11, world coordinates) or else rotation (50,
// degrees, in the plane of the normal), line spacing factor (44), and the
// size the editor measured (42 width, 43 height; absent from files by other
// writers, removed when an edit makes them stale).
#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/db_entities.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/draw_mtext.h"
#include "host/dxf/draw_text_box.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"
#include "host/dxf/mtext_layout.h"
#include "host/world_draw.h"

using fx::dxf::DataOf;
using fx::dxf::Range;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kSubclass = "AcDbMText";
// Contents are written in chunks of at most this many bytes.
constexpr size_t kChunk = 250;
// Height of a new MTEXT: the editor's default text size for metric drawings.
constexpr double kDefaultHeight = 2.5;

Range MTextData(const AcDbMText& mtext) { return DataOf(mtext.impl()->tags(), kSubclass); }

// The measured size the editor stored, when it did.
bool StoredSize(const AcDbMText& mtext, double& width, double& height) {
  const TagList& tags = mtext.impl()->tags();
  width = tags.GetDouble(42, MTextData(mtext), 0);
  height = tags.GetDouble(43, MTextData(mtext), 0);
  return width > 0 && height > 0;
}

void ForgetStoredSize(TagList& tags) {
  tags.EraseCode(42, DataOf(tags, kSubclass));
  tags.EraseCode(43, DataOf(tags, kSubclass));
}

// Splits stored contents into chunks, never inside a UTF-8 sequence.
std::vector<std::string_view> Chunks(std::string_view stored) {
  std::vector<std::string_view> chunks;
  while (stored.size() > kChunk) {
    size_t cut = kChunk;
    while (cut > 0 && (static_cast<unsigned char>(stored[cut]) & 0xC0) == 0x80) --cut;
    if (cut == 0) cut = kChunk;
    chunks.push_back(stored.substr(0, cut));
    stored.remove_prefix(cut);
  }
  chunks.push_back(stored);
  return chunks;
}

}  // namespace

AcDbMText::AcDbMText()
    : AcDbEntity([] {
        TagList tags = fx::dxf::NewEntityTags("MTEXT", kSubclass);
        fx::dxf::AppendPoint(tags, 10, AcGePoint3d::kOrigin);
        fx::dxf::AppendDouble(tags, 40, kDefaultHeight);
        fx::dxf::AppendDouble(tags, 41, 0);
        fx::dxf::AppendInt(tags, 71, kTopLeft);
        fx::dxf::AppendInt(tags, 72, 1);
        tags.Append(1, "");
        return std::make_unique<AcDbImpObject>(std::move(tags));
      }()) {}

AcGePoint3d AcDbMText::location() const { return impl()->tags().GetPoint(10, MTextData(*this)); }

std::string AcDbMText::contents() const {
  const TagList& tags = impl()->tags();
  Range range = MTextData(*this);
  std::string stored;
  for (size_t i = range.begin; i < range.end; ++i)
    if (tags[i].code == 3) stored += tags[i].value;
  stored += tags.GetString(1, range);
  return fx::dxf::DecodeText(*this, stored);
}

std::string AcDbMText::text() const { return fx::dxf::MTextPlainText(contents()); }

double AcDbMText::textHeight() const { return impl()->tags().GetDouble(40, MTextData(*this), 0); }

double AcDbMText::width() const { return impl()->tags().GetDouble(41, MTextData(*this), 0); }

double AcDbMText::rotation() const {
  // The direction's angle in the plane of the normal.
  AcGeVector3d d = direction();
  AcGeMatrix3d to_world = AcGeMatrix3d::planeToWorld(normal());
  AcGeVector3d x = to_world * AcGeVector3d::kXAxis, y = to_world * AcGeVector3d::kYAxis;
  return std::atan2(d.dotProduct(y), d.dotProduct(x));
}

AcGeVector3d AcDbMText::direction() const {
  const TagList& tags = impl()->tags();
  Range range = MTextData(*this);
  AcGeVector3d stored = tags.GetPoint(11, range) - AcGePoint3d::kOrigin;
  if (tags.Find(11, range) != TagList::kNotFound && stored.length() > 0) return stored.normal();
  // Without a direction, group 50 gives the rotation; the DXF reference
  // calls it radians, but files (as other readers take them) hold degrees.
  double angle = fx::dxf::ReadDegrees(tags, 50, range);
  return AcGeMatrix3d::planeToWorld(normal()) * AcGeVector3d(std::cos(angle), std::sin(angle), 0);
}

AcGeVector3d AcDbMText::normal() const { return fx::dxf::ReadNormal(impl()->tags(), MTextData(*this)); }

AcDbMText::AttachmentPoint AcDbMText::attachment() const {
  int64_t value = impl()->tags().GetInt(71, MTextData(*this), kTopLeft);
  return value >= kTopLeft && value <= kBottomRight ? static_cast<AttachmentPoint>(value) : kTopLeft;
}

double AcDbMText::lineSpacingFactor() const {
  double factor = impl()->tags().GetDouble(44, MTextData(*this), 1);
  return factor > 0 ? factor : 1;
}

AcDbObjectId AcDbMText::textStyle() const {
  return fx::dxf::SymbolIdByName(database(), "STYLE",
                                 fx::dxf::ReadName(impl()->tags(), 7, MTextData(*this), "STANDARD"));
}

Acad::ErrorStatus AcDbMText::setContents(const char* contents) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  std::string stored = fx::dxf::EncodeText(*this, contents != nullptr ? contents : "");
  TagList& tags = impl()->mutable_tags();
  Range range = MTextData(*this);
  // The new chunks go where the old contents started.
  size_t at = range.end;
  for (size_t i = range.begin; i < range.end; ++i)
    if (tags[i].code == 1 || tags[i].code == 3) {
      at = i;
      break;
    }
  for (size_t i = range.end; i-- > at;)
    if (tags[i].code == 1 || tags[i].code == 3) tags.Erase(i, i + 1);
  std::vector<std::string_view> chunks = Chunks(stored);
  for (size_t k = 0; k < chunks.size(); ++k)
    tags.Insert(at + k, k + 1 < chunks.size() ? 3 : 1, chunks[k]);
  ForgetStoredSize(tags);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setLocation(const AcGePoint3d& point) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  tags.SetPoint(10, point, MTextData(*this));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  if (!(height > 0)) return Acad::eInvalidInput;
  TagList& tags = impl()->mutable_tags();
  tags.SetDouble(40, height, MTextData(*this));
  ForgetStoredSize(tags);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint attachment) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  tags.SetInt(71, attachment, MTextData(*this));
  return Acad::eOk;
}

namespace {

// The laid-out lines of an MTEXT, in its own frame.
fx::dxf::MTextBlock Layout(const AcDbMText& mtext, double width_factor) {
  return fx::dxf::LayoutMText(fx::dxf::MTextParagraphs(mtext.contents(), width_factor),
                              {mtext.textHeight(), mtext.width(), mtext.lineSpacingFactor(), mtext.attachment()});
}

}  // namespace

bool AcDbMText::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  AcGiTextStyle style;
  AcDbObjectId style_id = textStyle();
  fx::dxf::LoadTextStyle(style_id, style);
  style.text_size = textHeight();
  fx::dxf::MTextBlock block = Layout(*this, fx::dxf::TextStyleWidthFactor(style_id));
  AcGeVector3d n = normal(), x = direction();
  AcGeVector3d y = n.crossProduct(x).normal();
  AcGePoint3d origin = location();
  for (const fx::dxf::MTextLine& line : block.lines) {
    for (const fx::dxf::MTextRun& run : line.runs) {
      if (run.text.empty()) continue;
      style.x_scale = run.width_factor;
      if (world_draw->geometry().text(origin + x * run.x + y * line.y, n, x, run.text.c_str(), true, style))
        return false;
    }
  }
  return true;
}

namespace fx::dxf {

void AddExtents(const AcDbMText& mtext, const AcGeMatrix3d& transform, AcDbExtents& box) {
  MTextBlock block = Layout(mtext, TextStyleWidthFactor(mtext.textStyle()));
  if (std::none_of(block.lines.begin(), block.lines.end(), [](const MTextLine& line) { return !line.text.empty(); }))
    return;
  double left = block.left, right = block.right, bottom = block.bottom, top = block.top;
  double stored_width, stored_height;
  if (StoredSize(mtext, stored_width, stored_height)) {
    // The measured box sits in the column as the first paragraph does, and
    // at the location as the attachment's row says.
    left = block.column_left + block.first_align * (block.column_right - block.column_left - stored_width);
    right = left + stored_width;
    int row = (mtext.attachment() - 1) / 3;
    top = row == 0 ? 0 : row == 1 ? stored_height / 2 : stored_height;
    bottom = top - stored_height;
  }
  AcGeVector3d x = mtext.direction();
  AcGeVector3d y = mtext.normal().crossProduct(x).normal();
  AcGePoint3d origin = mtext.location();
  for (double u : {left, right})
    for (double v : {bottom, top}) box.addPoint(transform * (origin + x * u + y * v));
}

}  // namespace fx::dxf
