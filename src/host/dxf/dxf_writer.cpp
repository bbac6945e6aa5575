#include "host/dxf/dxf_writer.h"

#include "host/dxf/dxf_binary_format.h"
#include "host/dxf/dxf_tag_formatter.h"
#include "host/dxf/dxf_version.h"

namespace fx::dxf {
namespace {

class StringSink : public ByteSink {
 public:
  explicit StringSink(std::string* out) : out_(*out) {}
  bool Append(std::string_view bytes) override {
    out_.append(bytes);
    return true;
  }

 private:
  std::string& out_;
};

// Collects spans of the original bytes that follow each other in the file, so that an
// unmodified stretch of records goes out as one piece (an unmodified file as one).
class OriginalRun {
 public:
  explicit OriginalRun(ByteSink& sink) : sink_(sink) {}

  bool Add(std::string_view bytes) {
    if (run_.data() + run_.size() == bytes.data()) {
      run_ = std::string_view(run_.data(), run_.size() + bytes.size());
      return true;
    }
    const bool ok = Flush();
    run_ = bytes;
    return ok;
  }

  bool Flush() {
    const bool ok = run_.empty() || sink_.Append(run_);
    run_ = {};
    return ok;
  }

 private:
  ByteSink& sink_;
  std::string_view run_;
};

TagFormatter FormatterFor(const Document& doc, Encoding target) {
  if (target == Encoding::kAscii) {
    if (doc.encoding() != Encoding::kAscii) return TagFormatter::Ascii(AsciiStyle{});
    return TagFormatter::Ascii(doc.ascii_style(), doc.source_bytes());
  }
  return TagFormatter::Binary(doc.encoding() == Encoding::kBinary
                                  ? doc.binary_two_byte_codes()
                                  : UsesTwoByteBinaryCodes(doc.acadver()));
}

// Where a record came from, for messages: "FILE:LINE: ", "FILE: offset N: ", or, for a
// record added by editing, "FILE: new LINE record: ".
std::string RecordPlace(const Document& doc, RecordId id) {
  const int source = doc.source_line(id);
  if (source == 0) return doc.name() + ": new " + std::string(doc.type(id)) + " record: ";
  if (doc.encoding() == Encoding::kBinary) {
    return doc.name() + ": offset " + std::to_string(source) + ": ";
  }
  return doc.name() + ":" + std::to_string(source) + ": ";
}

const char* EncodingName(Encoding encoding) {
  return encoding == Encoding::kAscii ? "ASCII" : "binary";
}

}  // namespace

Status WriteTo(const Document& doc, ByteSink& sink, std::optional<Encoding> as_encoding) {
  const Encoding target = as_encoding.value_or(doc.encoding());
  const bool same_encoding = target == doc.encoding();
  const TagFormatter formatter = FormatterFor(doc, target);
  const Status write_failed = Status::Error(doc.name() + ": writing failed");
  OriginalRun original(sink);
  std::string formatted;
  std::string failure;

  if (same_encoding) {
    original.Add(doc.head());
    original.Add(doc.prologue_bytes());
  } else {
    if (target == Encoding::kBinary) formatted.append(kBinarySentinel);
    if (!formatter.Append(doc.prologue(), &formatted, &failure)) {
      return Status::Error(doc.name() + ": cannot write the leading comments as " +
                           EncodingName(target) + ": " + failure);
    }
    if (!sink.Append(formatted)) return write_failed;
  }
  for (RecordId id = doc.first(); id != kNoRecord; id = doc.next(id)) {
    if (same_encoding && !doc.modified(id)) {
      const std::string_view bytes = doc.original_bytes(id);
      if (!original.Add(bytes)) return write_failed;
      // A text file cut inside its last value leaves that record without its line end;
      // a record added after it (by recovering, say) must still start on a line of its own.
      if (target == Encoding::kAscii && !bytes.ends_with('\n') && doc.next(id) != kNoRecord) {
        // A cut between "\r" and "\n" leaves only the "\n" to add.
        const char* line_end = bytes.ends_with('\r') || !doc.ascii_style().crlf ? "\n" : "\r\n";
        if (!original.Flush() || !sink.Append(line_end)) {
          return write_failed;
        }
      }
      continue;
    }
    formatted.clear();
    if (!formatter.Append(doc.tags(id), &formatted, &failure)) {
      return Status::Error(RecordPlace(doc, id) + "cannot write as " + EncodingName(target) + ": " +
                           failure);
    }
    if (!original.Flush() || !sink.Append(formatted)) return write_failed;
  }
  if (same_encoding && !original.Add(doc.tail())) return write_failed;
  if (!original.Flush()) return write_failed;
  return Status::Ok();
}

Status WriteTo(const Document& doc, std::string* out, std::optional<Encoding> as_encoding) {
  out->reserve(out->size() + doc.source_size());
  StringSink sink(out);
  return WriteTo(doc, sink, as_encoding);
}

}  // namespace fx::dxf
