#include "studio/last_good_state.h"

#include <fstream>
#include <sstream>

#include "host/database.h"
#include "host/dxf/drawing_io.h"
#include "host/dxf/dxf_document.h"
#include "host/dxf/imp_database.h"

namespace fx::studio {

bool LastGoodState::Changed(const AcDbDatabase& database) { return database.impl()->modified(); }

bool LastGoodState::Keep(AcDbDatabase& database, std::string* error) {
  if (!Changed(database)) return true;
  if (folder_ == nullptr) folder_ = std::make_unique<fx::server::TempFolder>();
  if (!folder_->ok()) {
    *error = "cannot make a temporary folder for the drawing's last state";
    return false;
  }
  const std::string path = folder_->path() + "/last-good.dxf";
  if (database.impl()->Save(path, /*stamp_update_time=*/false, error) != Acad::eOk) return false;
  kept_ = path;
  return true;
}

void LastGoodState::Reset(std::string source) {
  source_ = std::move(source);
  kept_.clear();
}

std::unique_ptr<AcDbDatabase> LastGoodState::Read(const std::string& name, const fx::dxf::DwgSource* dwg,
                                                  std::string* error) const {
  if (kept_.empty()) return fx::dxf::ReadDrawing(source_, error);
  std::ifstream file(kept_, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  if (!file) {
    *error = "cannot read " + kept_;
    return nullptr;
  }
  fx::dxf::LoadError load_error;
  std::unique_ptr<fx::dxf::Document> document = fx::dxf::Document::Parse(bytes.str(), name, &load_error);
  if (document == nullptr) {
    *error = load_error.message;
    return nullptr;
  }
  std::unique_ptr<AcDbImpDatabase> imp = AcDbImpDatabase::Build(std::move(document), error);
  if (imp == nullptr) return nullptr;
  // A drawing read from a DWG stays one: saving it still writes DXF only.
  if (dwg != nullptr) imp->set_dwg_source(*dwg);
  return std::make_unique<AcDbDatabase>(std::move(imp));
}

}  // namespace fx::studio
