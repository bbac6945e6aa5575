#include "host/dxf/dxf_structure.h"

#include <string>
#include <vector>

#include "host/dxf/dxf_document.h"
#include "host/dxf/dxf_sections.h"
#include "host/dxf/dxf_values.h"

namespace fx::dxf {
namespace {

// What is still open at the end of the records.
struct OpenRecords {
  RecordId section = kNoRecord;
  RecordId table = kNoRecord;
  RecordId block = kNoRecord;
  RecordId sequence = kNoRecord;  // a POLYLINE, or an INSERT followed by attributes
  bool eof = false;
  bool entities = false;  // an ENTITIES section was seen
};

bool HasFollowingAttributes(const Document& doc, RecordId insert) {
  for (const Tag& tag : doc.tags(insert)) {
    if (tag.code == 66) return ParseInt(tag.value).value_or(0) == 1;
  }
  return false;
}

OpenRecords Walk(const Document& doc) {
  OpenRecords open;
  for (RecordId id = doc.first(); id != kNoRecord; id = doc.next(id)) {
    const std::string_view type = doc.type(id);
    if (type == "SECTION") {
      open = {.section = id, .eof = open.eof, .entities = open.entities || SectionName(doc, id) == "ENTITIES"};
    } else if (type == "ENDSEC") {
      open = {.eof = open.eof, .entities = open.entities};
    } else if (type == "EOF") {
      open.eof = true;
    } else if (type == "TABLE") {
      open.table = id;
    } else if (type == "ENDTAB") {
      open.table = kNoRecord;
    } else if (type == "BLOCK") {
      open.block = id;
    } else if (type == "ENDBLK") {
      open.block = open.sequence = kNoRecord;
    } else if (type == "SEQEND") {
      open.sequence = kNoRecord;
    } else if (type == "POLYLINE" || (type == "INSERT" && HasFollowingAttributes(doc, id))) {
      open.sequence = id;
    } else if (type != "VERTEX" && type != "ATTRIB") {
      open.sequence = kNoRecord;
    }
  }
  return open;
}

// "FILE:LINE: " for ASCII files, "FILE: offset N: " for binary ones.
std::string Place(const Document& doc, RecordId id) {
  const std::string where = std::to_string(doc.source_line(id));
  return doc.encoding() == Encoding::kAscii ? doc.name() + ":" + where + ": "
                                            : doc.name() + ": offset " + where + ": ";
}

// The place just after the last tag read (a record's tags take two lines each).
std::string EndPlace(const Document& doc) {
  if (doc.encoding() != Encoding::kAscii) return doc.name() + ": offset " + std::to_string(doc.source_size()) + ": ";
  const RecordId last = doc.last();
  return doc.name() + ":" + std::to_string(doc.source_line(last) + 2 * doc.tags(last).size()) + ": ";
}

std::string Where(const Document& doc, RecordId id) {
  return (doc.encoding() == Encoding::kAscii ? "line " : "offset ") + std::to_string(doc.source_line(id));
}

// Records that open or close a structure, which the cut cannot have left half-written in a
// way that matters: they are kept.
bool IsStructural(std::string_view type) {
  return type == "SECTION" || type == "TABLE" || type == "ENDTAB" || type == "BLOCK" || type == "ENDBLK" ||
         type == "SEQEND";
}

void Append(Document& doc, std::initializer_list<Tag> tags) {
  doc.InsertBefore(kNoRecord, std::vector<Tag>(tags));
}

std::string SectionLabel(const Document& doc, RecordId section) {
  const std::string_view name = SectionName(doc, section);
  return name.empty() ? "unnamed section" : std::string(name) + " section";
}

// Drops the possibly incomplete last record and closes what stays open.
std::string Recover(Document& doc, OpenRecords open) {
  std::string done;
  const RecordId last = doc.last();
  const bool cut_section_record = last == open.section && SectionName(doc, last).empty();
  if (open.section != kNoRecord && (cut_section_record || (last != open.section && !IsStructural(doc.type(last))))) {
    done = "dropped the last record read, " + std::string(doc.type(last)) + " at " + Where(doc, last) +
           ", which the cut may have left incomplete; ";
    doc.Erase(last);
    open = Walk(doc);
  }
  if (open.section != kNoRecord) {
    if (open.sequence != kNoRecord) Append(doc, {{0, "SEQEND"}});
    if (open.block != kNoRecord) Append(doc, {{0, "ENDBLK"}});
    if (open.table != kNoRecord) Append(doc, {{0, "ENDTAB"}});
    Append(doc, {{0, "ENDSEC"}});
    done += "closed the " + SectionLabel(doc, open.section) + "; ";
  }
  if (!open.entities) {
    Append(doc, {{0, "SECTION"}, {2, "ENTITIES"}});
    Append(doc, {{0, "ENDSEC"}});
    done += "added an empty ENTITIES section; ";
  }
  Append(doc, {{0, "EOF"}});
  return done + "everything after the cut is missing";
}

}  // namespace

bool CheckStructure(Document& doc, DamagedFile damaged, LoadError* error, DiagnosticSink* sink) {
  const OpenRecords open = Walk(doc);
  if (open.eof || doc.last() == kNoRecord) {
    if (open.section != kNoRecord && sink != nullptr) {
      sink->Report(Severity::kWarning, Place(doc, open.section) + "the " +
                                           std::string(SectionName(doc, open.section)) +
                                           " section has no ENDSEC record");
    }
    return true;
  }
  if (open.section == kNoRecord && open.entities) {  // only the EOF record is missing
    if (damaged == DamagedFile::kRecover) Append(doc, {{0, "EOF"}});
    return true;
  }

  const std::string end = EndPlace(doc);
  const std::string cut =
      open.section != kNoRecord
          ? "the file ends inside the " + SectionLabel(doc, open.section) + " begun at " + Where(doc, open.section)
          : "the file ends after its last complete section without an ENTITIES section";
  if (damaged == DamagedFile::kRefuse) {
    error->message = end + cut + ": it is truncated (recovering loads what was read before the cut)";
    return false;
  }
  const std::string done = Recover(doc, open);
  if (sink != nullptr) sink->Report(Severity::kWarning, end + cut + ": recovered: " + done);
  return true;
}

}  // namespace fx::dxf
