// Object identity in a drawing database: handles (persistent, written in the
// file) and object ids (in-memory references valid while the database lives).
#ifndef FLOORXPORT_HOST_IDS_H_
#define FLOORXPORT_HOST_IDS_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

class AcDbDatabase;
class AcDbStub;  // the host's record of one object; opaque to the plug-in

namespace AcDb {
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };

// Lineweights in hundredths of a millimetre, and the three symbolic values.
enum LineWeight : int {
  kLnWt000 = 0, kLnWt005 = 5, kLnWt009 = 9, kLnWt013 = 13, kLnWt015 = 15, kLnWt018 = 18,
  kLnWt020 = 20, kLnWt025 = 25, kLnWt030 = 30, kLnWt035 = 35, kLnWt040 = 40, kLnWt050 = 50,
  kLnWt053 = 53, kLnWt060 = 60, kLnWt070 = 70, kLnWt080 = 80, kLnWt090 = 90, kLnWt100 = 100,
  kLnWt106 = 106, kLnWt120 = 120, kLnWt140 = 140, kLnWt158 = 158, kLnWt200 = 200, kLnWt211 = 211,
  kLnWtByLayer = -1, kLnWtByBlock = -2, kLnWtByLwDefault = -3,
};

enum Visibility { kVisible = 0, kInvisible = 1 };

// Drawing units ($INSUNITS).
enum UnitsValue {
  kUnitsUndefined = 0, kUnitsInches = 1, kUnitsFeet = 2, kUnitsMiles = 3, kUnitsMillimeters = 4,
  kUnitsCentimeters = 5, kUnitsMeters = 6, kUnitsKilometers = 7, kUnitsMicroinches = 8,
  kUnitsMils = 9, kUnitsYards = 10, kUnitsAngstroms = 11, kUnitsNanometers = 12,
  kUnitsMicrons = 13, kUnitsDecimeters = 14, kUnitsDekameters = 15, kUnitsHectometers = 16,
  kUnitsGigameters = 17, kUnitsAstronomical = 18, kUnitsLightYears = 19, kUnitsParsecs = 20,
};
}  // namespace AcDb

// A persistent object handle: the hexadecimal number written in the file.
class AcDbHandle {
 public:
  AcDbHandle() = default;
  explicit AcDbHandle(uint64_t value) : value_(value) {}
  // Parses hexadecimal text ("1A2F"); a malformed text gives the null handle.
  explicit AcDbHandle(std::string_view hex);

  bool isNull() const { return value_ == 0; }
  uint64_t value() const { return value_; }
  // Upper-case hexadecimal without leading zeros, as written in files ("1A2F").
  std::string ascii() const;
  // The same text into a caller's buffer of at least 17 characters.
  void getIntoAsciiBuffer(char* buffer, size_t size) const;

  AcDbHandle& operator++() { ++value_; return *this; }
  auto operator<=>(const AcDbHandle&) const = default;

 private:
  uint64_t value_ = 0;
};

// A reference to an object of an open database, as cheap as a pointer.
// Two ids are equal when they name the same object. The null id names nothing.
// Ids stay valid until their database is destroyed, also for erased objects.
class AcDbObjectId {
 public:
  AcDbObjectId() = default;
  explicit AcDbObjectId(AcDbStub* stub) : stub_(stub) {}
  static const AcDbObjectId kNull;

  bool isNull() const { return stub_ == nullptr; }
  bool isValid() const { return stub_ != nullptr; }
  bool isErased() const;
  AcDbHandle handle() const;        // the null handle for the null id
  AcDbDatabase* database() const;   // nullptr for the null id
  AcDbStub* stub() const { return stub_; }

  auto operator<=>(const AcDbObjectId&) const = default;

 private:
  AcDbStub* stub_ = nullptr;
};

template <>
struct std::hash<AcDbObjectId> {
  size_t operator()(const AcDbObjectId& id) const noexcept {
    return std::hash<const void*>()(id.stub());
  }
};

// A calendar date and time, as the drawing's $TDUUPDATE holds it (Julian day
// number with the fraction of the day).
class AcDbDate {
 public:
  AcDbDate() = default;
  static AcDbDate fromJulian(double julian);
  static AcDbDate now();  // current universal time
  double julian() const;

  int year() const { return year_; }
  int month() const { return month_; }
  int day() const { return day_; }
  int hour() const { return hour_; }
  int minute() const { return minute_; }
  int second() const { return second_; }
  int millisecond() const { return millisecond_; }
  auto operator<=>(const AcDbDate&) const = default;

 private:
  // Field order makes the defaulted comparison chronological.
  int year_ = 0, month_ = 0, day_ = 0, hour_ = 0, minute_ = 0, second_ = 0, millisecond_ = 0;
};

#endif  // FLOORXPORT_HOST_IDS_H_
