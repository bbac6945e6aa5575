#include "host/ids.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

const AcDbObjectId AcDbObjectId::kNull;

AcDbHandle::AcDbHandle(std::string_view hex) {
  uint64_t value = 0;
  auto [end, ec] = std::from_chars(hex.data(), hex.data() + hex.size(), value, 16);
  if (ec == std::errc() && end == hex.data() + hex.size()) value_ = value;
}

std::string AcDbHandle::ascii() const {
  char buffer[17];
  getIntoAsciiBuffer(buffer, sizeof buffer);
  return buffer;
}

void AcDbHandle::getIntoAsciiBuffer(char* buffer, size_t size) const {
  std::snprintf(buffer, size, "%llX", static_cast<unsigned long long>(value_));
}

namespace {
// Julian day number of a Gregorian calendar date (Fliegel and Van Flandern).
long JulianDayNumber(int y, int m, int d) {
  return (1461L * (y + 4800 + (m - 14) / 12)) / 4 + (367L * (m - 2 - 12 * ((m - 14) / 12))) / 12 -
         (3L * ((y + 4900 + (m - 14) / 12) / 100)) / 4 + d - 32075;
}
}  // namespace

AcDbDate AcDbDate::fromJulian(double julian) {
  AcDbDate date;
  if (!(julian > 0) || !std::isfinite(julian)) return date;
  long jdn = static_cast<long>(std::floor(julian));
  long total_ms = std::lround((julian - static_cast<double>(jdn)) * 86400000.0);
  if (total_ms >= 86400000L) {
    ++jdn;
    total_ms -= 86400000L;
  }
  long l = jdn + 68569;
  long n = 4 * l / 146097;
  l = l - (146097 * n + 3) / 4;
  long i = 4000 * (l + 1) / 1461001;
  l = l - 1461 * i / 4 + 31;
  long j = 80 * l / 2447;
  date.day_ = static_cast<int>(l - 2447 * j / 80);
  l = j / 11;
  date.month_ = static_cast<int>(j + 2 - 12 * l);
  date.year_ = static_cast<int>(100 * (n - 49) + i + l);
  date.hour_ = static_cast<int>(total_ms / 3600000L);
  date.minute_ = static_cast<int>(total_ms / 60000L % 60);
  date.second_ = static_cast<int>(total_ms / 1000L % 60);
  date.millisecond_ = static_cast<int>(total_ms % 1000);
  return date;
}

double AcDbDate::julian() const {
  if (year_ == 0) return 0;
  double ms = ((hour_ * 60.0 + minute_) * 60.0 + second_) * 1000.0 + millisecond_;
  return static_cast<double>(JulianDayNumber(year_, month_, day_)) + ms / 86400000.0;
}

AcDbDate AcDbDate::now() {
  using namespace std::chrono;
  auto ms = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
  // Drawings count whole Julian day numbers from midnight, so the Unix epoch
  // (1970-01-01 00:00) is 2440588.0, not the astronomers' 2440587.5.
  return fromJulian(2440588.0 + static_cast<double>(ms) / 86400000.0);
}
