#include "host/dxf/resbuf_tags.h"

#include <cstdlib>
#include <cstring>

#include "host/dxf/dxf_values.h"

namespace fx::dxf {
namespace {

char* CopyString(const std::string& text) {
  char* copy = static_cast<char*>(std::malloc(text.size() + 1));
  std::memcpy(copy, text.c_str(), text.size() + 1);
  return copy;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return 0;
}

}  // namespace

resbuf* TagsToChain(const TagList& tags, TagList::Range range, const TextCodec& codec) {
  resbuf* head = nullptr;
  resbuf** tail = &head;
  for (size_t i = range.begin; i < range.end; ++i) {
    const Tag& tag = tags[i];
    resbuf* rb = acutNewRb(tag.code);
    switch (ResbufKindOf(tag.code)) {
      case ResbufValueKind::kString: rb->resval.rstring = CopyString(codec.Decode(tag.value)); break;
      case ResbufValueKind::kReal: rb->resval.rreal = ParseDouble(tag.value).value_or(0); break;
      case ResbufValueKind::kShort: rb->resval.rint = static_cast<short>(ParseInt(tag.value).value_or(0)); break;
      case ResbufValueKind::kLong: rb->resval.rlong = static_cast<int32_t>(ParseInt(tag.value).value_or(0)); break;
      case ResbufValueKind::kInt64: rb->resval.mnInt64 = ParseInt(tag.value).value_or(0); break;
      case ResbufValueKind::kPoint:
        rb->resval.rpoint[0] = ParseDouble(tag.value).value_or(0);
        // y and z follow as code+10 and code+20.
        for (int axis = 1; axis <= 2 && i + 1 < range.end && tags[i + 1].code == tag.code + 10 * axis; ++axis)
          rb->resval.rpoint[axis] = ParseDouble(tags[++i].value).value_or(0);
        break;
      case ResbufValueKind::kBinary: {
        std::string_view hex = TrimBlanks(tag.value);
        size_t size = hex.size() / 2;
        rb->resval.rbinary.clen = static_cast<short>(size);
        rb->resval.rbinary.buf = static_cast<char*>(std::malloc(size > 0 ? size : 1));
        for (size_t b = 0; b < size; ++b)
          rb->resval.rbinary.buf[b] = static_cast<char>(HexDigit(hex[2 * b]) * 16 + HexDigit(hex[2 * b + 1]));
        break;
      }
      case ResbufValueKind::kName:
      case ResbufValueKind::kNone: break;
    }
    *tail = rb;
    tail = &rb->rbnext;
  }
  return head;
}

bool ChainToTags(const resbuf* chain, const TextCodec& codec, std::vector<std::pair<int, std::string>>* tags) {
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) {
    int code = rb->restype;
    switch (ResbufKindOf(code)) {
      case ResbufValueKind::kString:
        tags->emplace_back(code, codec.Encode(rb->resval.rstring ? rb->resval.rstring : ""));
        break;
      case ResbufValueKind::kReal: tags->emplace_back(code, FormatDouble(rb->resval.rreal)); break;
      case ResbufValueKind::kShort: tags->emplace_back(code, std::to_string(rb->resval.rint)); break;
      case ResbufValueKind::kLong: tags->emplace_back(code, std::to_string(rb->resval.rlong)); break;
      case ResbufValueKind::kInt64: tags->emplace_back(code, std::to_string(rb->resval.mnInt64)); break;
      case ResbufValueKind::kPoint:
        for (int axis = 0; axis < 3; ++axis) tags->emplace_back(code + 10 * axis, FormatDouble(rb->resval.rpoint[axis]));
        break;
      case ResbufValueKind::kBinary: {
        static constexpr char kHex[] = "0123456789ABCDEF";
        std::string hex;
        for (short b = 0; b < rb->resval.rbinary.clen; ++b) {
          auto byte = static_cast<unsigned char>(rb->resval.rbinary.buf[b]);
          hex += kHex[byte >> 4];
          hex += kHex[byte & 15];
        }
        tags->emplace_back(code, hex);
        break;
      }
      case ResbufValueKind::kName:
      case ResbufValueKind::kNone: return false;
    }
    if (code >= RTNONE) return false;  // RT codes have no tag form
  }
  return true;
}

}  // namespace fx::dxf
