// AcDbDatabase, object ids and opening objects in the headless host.
#include "host/database.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/dxf/drawing_io.h"
#include "host/dxf/dxf_header_variables.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"
#include "host/dxf/model_space_extents.h"

using fx::dxf::Tag;
using fx::dxf::TagList;

// ---- Ids -------------------------------------------------------------------

bool AcDbObjectId::isErased() const { return stub_ != nullptr && stub_->erased; }
AcDbHandle AcDbObjectId::handle() const { return stub_ ? stub_->handle : AcDbHandle(); }
AcDbDatabase* AcDbObjectId::database() const { return stub_ ? stub_->database->api() : nullptr; }

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool open_erased) {
  object = nullptr;
  if (id.isNull()) return Acad::eNullObjectId;
  return id.stub()->database->Open(object, id.stub(), mode, open_erased);
}

Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id) {
  name[0] = static_cast<int64_t>(reinterpret_cast<intptr_t>(id.stub()));
  name[1] = 0;
  return Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
  id = AcDbObjectId(reinterpret_cast<AcDbStub*>(static_cast<intptr_t>(name[0])));
  return id.isNull() ? Acad::eNullObjectId : Acad::eOk;
}

// ---- The database ----------------------------------------------------------

AcDbDatabase::AcDbDatabase(std::unique_ptr<AcDbImpDatabase> imp) : imp_(std::move(imp)) {
  imp_->set_api(this);
}
AcDbDatabase::~AcDbDatabase() = default;

std::string AcDbDatabase::filename() const { return imp_->document().name(); }

Acad::ErrorStatus AcDbDatabase::saveAs(const char* path) {
  std::string error;
  return imp_->Save(path, /*stamp_update_time=*/true, &error);
}

namespace {

template <class T>
Acad::ErrorStatus OpenTable(AcDbImpDatabase& db, std::string_view name, T*& table, AcDb::OpenMode mode) {
  table = nullptr;
  // A table the drawing lacks is made when it is opened for write.
  fx::dxf::SymbolTable* symbols = mode == AcDb::kForWrite ? db.EnsureTable(name) : db.FindTable(name);
  if (symbols == nullptr) return Acad::eKeyNotFound;
  return acdbOpenObject(table, AcDbObjectId(symbols->stub), mode);
}

std::string_view HeaderValue(const AcDbImpDatabase& db, std::string_view name, int code) {
  for (const Tag& tag : fx::dxf::GetHeaderVariable(db.document(), name))
    if (tag.code == code) return tag.value;
  return {};
}

AcGePoint3d HeaderPoint(const AcDbImpDatabase& db, std::string_view name) {
  return {fx::dxf::ParseDouble(HeaderValue(db, name, 10)).value_or(0),
          fx::dxf::ParseDouble(HeaderValue(db, name, 20)).value_or(0),
          fx::dxf::ParseDouble(HeaderValue(db, name, 30)).value_or(0)};
}

void SetHeader(AcDbImpDatabase& db, std::string_view name, const std::vector<std::pair<int, std::string>>& values) {
  std::vector<Tag> tags;
  for (const auto& [code, value] : values) tags.push_back({code, value});
  if (fx::dxf::SetHeaderVariable(db.document(), name, tags)) db.MarkModified();
}

}  // namespace

Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& t, AcDb::OpenMode m) { return OpenTable(*imp_, "BLOCK_RECORD", t, m); }
Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& t, AcDb::OpenMode m) { return OpenTable(*imp_, "LAYER", t, m); }
Acad::ErrorStatus AcDbDatabase::getViewportTable(AcDbViewportTable*& t, AcDb::OpenMode m) { return OpenTable(*imp_, "VPORT", t, m); }
Acad::ErrorStatus AcDbDatabase::getRegAppTable(AcDbRegAppTable*& t, AcDb::OpenMode m) { return OpenTable(*imp_, "APPID", t, m); }
Acad::ErrorStatus AcDbDatabase::getLinetypeTable(AcDbLinetypeTable*& t, AcDb::OpenMode m) { return OpenTable(*imp_, "LTYPE", t, m); }
Acad::ErrorStatus AcDbDatabase::getTextStyleTable(AcDbTextStyleTable*& t, AcDb::OpenMode m) { return OpenTable(*imp_, "STYLE", t, m); }

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode) {
  dictionary = nullptr;
  if (imp_->named_objects_dictionary() == nullptr) return Acad::eKeyNotFound;
  return acdbOpenObject(dictionary, AcDbObjectId(imp_->named_objects_dictionary()), mode);
}

AcDbObjectId AcDbDatabase::blockTableId() const {
  fx::dxf::SymbolTable* table = imp_->FindTable("BLOCK_RECORD");
  return table ? AcDbObjectId(table->stub) : AcDbObjectId();
}
AcDbObjectId AcDbDatabase::layerTableId() const {
  fx::dxf::SymbolTable* table = imp_->FindTable("LAYER");
  return table ? AcDbObjectId(table->stub) : AcDbObjectId();
}
AcDbObjectId AcDbDatabase::namedObjectsDictionaryId() const { return AcDbObjectId(imp_->named_objects_dictionary()); }
AcDbObjectId AcDbDatabase::modelSpaceId() const { return AcDbObjectId(imp_->model_space()); }

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, bool, const AcDbHandle& handle) {
  AcDbStub* stub = imp_->FindHandle(handle);
  id = AcDbObjectId(stub != nullptr && !stub->synthetic_handle ? stub : nullptr);
  return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

std::string AcDbDatabase::version() const { return std::string(imp_->document().acadver()); }

std::string AcDbDatabase::dwgcodepage() const {
  return std::string(fx::dxf::TrimBlanks(HeaderValue(*imp_, "$DWGCODEPAGE", 3)));
}

AcDbDate AcDbDatabase::tduupdate() const {
  return AcDbDate::fromJulian(fx::dxf::ParseDouble(HeaderValue(*imp_, "$TDUUPDATE", 40)).value_or(0));
}
AcDbDate AcDbDatabase::tdupdate() const {
  return AcDbDate::fromJulian(fx::dxf::ParseDouble(HeaderValue(*imp_, "$TDUPDATE", 40)).value_or(0));
}

AcDb::UnitsValue AcDbDatabase::insunits() const {
  return static_cast<AcDb::UnitsValue>(fx::dxf::ParseInt(HeaderValue(*imp_, "$INSUNITS", 70)).value_or(0));
}

Acad::ErrorStatus AcDbDatabase::setInsunits(AcDb::UnitsValue units) {
  SetHeader(*imp_, "$INSUNITS", {{70, std::to_string(static_cast<int>(units))}});
  return Acad::eOk;
}

AcGePoint3d AcDbDatabase::extmin() const { return HeaderPoint(*imp_, "$EXTMIN"); }
AcGePoint3d AcDbDatabase::extmax() const { return HeaderPoint(*imp_, "$EXTMAX"); }

Acad::ErrorStatus AcDbDatabase::updateExt() {
  AcDbExtents extents;
  if (Acad::ErrorStatus es = fx::dxf::ModelSpaceExtents(*this, extents); es != Acad::eOk) return es;
  fx::dxf::SetHeaderExtents(*this, extents);
  return Acad::eOk;
}

namespace fx::dxf {

Acad::ErrorStatus ModelSpaceExtents(AcDbDatabase& database, AcDbExtents& extents) {
  extents = AcDbExtents();
  AcDbBlockTableRecord* space = nullptr;
  if (Acad::ErrorStatus es = acdbOpenObject(space, database.modelSpaceId(), AcDb::kForRead); es != Acad::eOk)
    return es;
  for (AcDbObjectId id : space->entityIds()) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    AcDbExtents box;
    if (entity->getGeomExtents(box) == Acad::eOk) extents.addExt(box);
    entity->close();
  }
  space->close();
  return Acad::eOk;
}

void SetHeaderExtents(AcDbDatabase& database, const AcDbExtents& extents) {
  if (extents.isEmpty()) return;
  auto point = [](const AcGePoint3d& p) {
    return std::vector<std::pair<int, std::string>>{
        {10, FormatDouble(p.x)}, {20, FormatDouble(p.y)}, {30, FormatDouble(p.z)}};
  };
  SetHeader(*database.impl(), "$EXTMIN", point(extents.minPoint()));
  SetHeader(*database.impl(), "$EXTMAX", point(extents.maxPoint()));
}

}  // namespace fx::dxf

double AcDbDatabase::ltscale() const {
  double scale = fx::dxf::ParseDouble(HeaderValue(*imp_, "$LTSCALE", 40)).value_or(1.0);
  return scale > 0 ? scale : 1.0;
}

AcDbHandle AcDbDatabase::handseed() const { return AcDbHandle(fx::dxf::TrimBlanks(HeaderValue(*imp_, "$HANDSEED", 5))); }

AcDbObjectId AcDbDatabase::clayer() const {
  std::string_view name = fx::dxf::TrimBlanks(HeaderValue(*imp_, "$CLAYER", 8));
  return AcDbObjectId(imp_->FindSymbol("LAYER", name.empty() ? std::string_view("0") : name));
}

size_t AcDbDatabase::approxNumObjects() const { return imp_->document().record_count(); }

// ---- Services --------------------------------------------------------------

namespace {
class HeadlessServices : public AcDbHostApplicationServices {
 public:
  AcDbDatabase* workingDatabase() const override { return working_; }
  void set_working(AcDbDatabase* database) { working_ = database; }

 private:
  AcDbDatabase* working_ = nullptr;
};
HeadlessServices& Services() {
  static HeadlessServices services;
  return services;
}
}  // namespace

AcDbHostApplicationServices* acdbHostApplicationServices() { return &Services(); }

bool acdbRegApp(const char* name) {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (db == nullptr) return false;
  AcDbRegAppTable* table = nullptr;
  if (db->getRegAppTable(table, AcDb::kForRead) == Acad::eOk) {
    bool registered = table->has(name);
    table->close();
    if (registered) return true;
  }
  if (db->getRegAppTable(table, AcDb::kForWrite) != Acad::eOk) return false;
  bool ok = true;
  auto* record = new AcDbRegAppTableRecord();
  ok = ok && record->setName(name) == Acad::eOk;
  AcDbObjectId id;
  ok = ok && table->add(id, record) == Acad::eOk;
  if (ok) record->close();
  else delete record;
  table->close();
  return ok;
}

namespace fx::dxf {

namespace {

// A private folder (mode 0700) removed with what it holds.
class PrivateTempDir {
 public:
  PrivateTempDir() {
    const char* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base != nullptr && *base != '\0' ? base : "/tmp") +
                          "/floorxport-dwg-XXXXXX";
    if (::mkdtemp(pattern.data()) != nullptr) path_ = pattern;
  }
  ~PrivateTempDir() {
    if (path_.empty()) return;
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  PrivateTempDir(const PrivateTempDir&) = delete;
  PrivateTempDir& operator=(const PrivateTempDir&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

std::unique_ptr<AcDbDatabase> ReadDwgDrawing(const std::string& path, std::string* error,
                                             DiagnosticSink& sink, const WarningSink& warnings) {
  std::string message;
  PrivateTempDir folder;
  if (folder.path().empty()) {
    message = path + ": cannot make a temporary folder to convert the DWG drawing: " +
              std::strerror(errno);
  }
  DwgSource source;
  const std::string dxf = folder.path() + "/drawing.dxf";
  std::string bytes;
  if (message.empty() && ConvertDwg(path, dxf, &source, &message)) {
    std::ifstream file(dxf, std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    if (!file.good() && !file.eof()) message = path + ": cannot read the converted drawing";
  }
  if (!message.empty()) {
    if (error != nullptr) *error = message;
    return nullptr;
  }
  LoadError load_error;
  std::unique_ptr<Document> document = Document::Parse(std::move(bytes), path, &load_error, &sink);
  if (document == nullptr) {
    if (error != nullptr) *error = load_error.message + " (in the DXF converted from the DWG)";
    return nullptr;
  }
  std::unique_ptr<AcDbImpDatabase> imp = AcDbImpDatabase::Build(std::move(document), error);
  if (imp == nullptr) return nullptr;
  if (warnings) {
    for (const std::string& dropped : source.dropped)
      warnings(path + ": converting the DWG dropped " + dropped + " entities");
  }
  imp->set_dwg_source(std::move(source));
  return std::make_unique<AcDbDatabase>(std::move(imp));
}

}  // namespace

const DwgSource* DwgSourceOf(const AcDbDatabase& database) {
  return database.impl()->dwg_source();
}

std::unique_ptr<AcDbDatabase> ReadDrawing(const std::string& path, std::string* error,
                                          const WarningSink& warnings, DamagedFile damaged) {
  struct Sink : DiagnosticSink {
    const WarningSink* warnings;
    void Report(Severity, std::string message) override {
      if (*warnings) (*warnings)(message);
    }
  } sink;
  sink.warnings = &warnings;
  if (IsDwgFile(path)) return ReadDwgDrawing(path, error, sink, warnings);
  LoadError load_error;
  std::unique_ptr<Document> document = Document::Load(path, &load_error, &sink, damaged);
  if (document == nullptr) {
    if (error != nullptr) *error = load_error.message;
    return nullptr;
  }
  std::unique_ptr<AcDbImpDatabase> imp = AcDbImpDatabase::Build(std::move(document), error);
  if (imp == nullptr) return nullptr;
  return std::make_unique<AcDbDatabase>(std::move(imp));
}

void SetWorkingDatabase(AcDbDatabase* database) { Services().set_working(database); }

void ApplyWorkingDatabaseDefaults(TagList& tags) {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  TagList::Range entity = tags.Subclass("AcDbEntity");
  if (db == nullptr || entity.empty()) return;
  const AcDbImpDatabase& imp = *db->impl();
  // Values of new objects are UTF-8 until they join a drawing.
  std::string_view layer = GetHeaderValue(imp.document(), "$CLAYER");
  if (!layer.empty() && imp.document().codec().Decode(layer) != "0")
    tags.SetString(8, imp.document().codec().Decode(layer), entity);
  std::string_view type = tags.type();
  if (type != "TEXT" && type != "MTEXT" && type != "ATTDEF" && type != "ATTRIB") return;
  TagList::Range text = tags.Subclass(type == "MTEXT" ? "AcDbMText" : "AcDbText");
  size_t height = tags.Find(40, text);
  double size = ParseDouble(GetHeaderValue(imp.document(), "$TEXTSIZE")).value_or(0);
  if (height != TagList::kNotFound && ParseDouble(tags[height].value).value_or(0) == 0 && size > 0)
    tags.SetValue(height, FormatDouble(size));
}

const TextCodec& CodecOf(const AcDbObject& object) {
  static const TextCodec kUtf8 = TextCodec::Utf8();
  return object.impl()->database() ? object.impl()->database()->codec() : kUtf8;
}

AcDbObjectId BlockRecordIdByName(AcDbDatabase* database, std::string_view name) {
  return SymbolIdByName(database, "BLOCK_RECORD", name);
}

AcDbObjectId SymbolIdByName(AcDbDatabase* database, std::string_view table, std::string_view name) {
  if (database == nullptr) return {};
  return AcDbObjectId(database->impl()->FindSymbol(table, name));
}

std::vector<AcDbObjectId> SubEntityIds(const AcDbObject& object) {
  std::vector<AcDbObjectId> ids;
  AcDbStub* stub = object.impl()->stub();
  if (stub == nullptr) return ids;
  for (AcDbStub* child : stub->database->SubEntities(stub)) ids.emplace_back(child);
  return ids;
}

}  // namespace fx::dxf
