#include "export/document_file.h"

#include "host/editor.h"
#include "svg/svg_save.h"

namespace fx::exports {

std::string SaveFailureMessage(const std::string& reason) { return "\nPlanVault: Cannot export: " + reason; }

bool SaveDocumentFile(const pugi::xml_document& document, const std::string& path, Compression compression) {
  std::string error;
  if (fx::svg::SaveXmlDocument(document, path, compression == Compression::kNone ? nullptr : "wb9", &error))
    return true;
  acutPrintf("%s", SaveFailureMessage(error).c_str());
  return false;
}

bool IsLargeDrawingFile(uintmax_t size) { return size > kDrawingWarningSize; }

}  // namespace fx::exports
