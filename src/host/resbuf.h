// Result buffers: the linked lists in which the editor passes extended entity
// data, xrecord contents and command arguments. Layout and codes are the
// editor's own so plug-in code reads the same in every host.
#ifndef FLOORXPORT_HOST_RESBUF_H_
#define FLOORXPORT_HOST_RESBUF_H_

#include <cstdint>
#include <memory>

// Result type codes of the editor's C interface.
constexpr int RTNONE = 5000;
constexpr int RTREAL = 5001;
constexpr int RTPOINT = 5002;
constexpr int RTSHORT = 5003;
constexpr int RTANG = 5004;
constexpr int RTSTR = 5005;
constexpr int RTENAME = 5006;
constexpr int RTPICKS = 5007;
constexpr int RTORINT = 5008;
constexpr int RT3DPOINT = 5009;
constexpr int RTLONG = 5010;
constexpr int RTVOID = 5014;
constexpr int RTLB = 5016;
constexpr int RTLE = 5017;
constexpr int RTDXF0 = 5020;
// Status codes of editor input functions.
constexpr int RTNORM = 5100;
constexpr int RTERROR = -5001;
constexpr int RTCAN = -5002;
constexpr int RTREJ = -5003;
constexpr int RTFAIL = -5004;
constexpr int RTKWORD = -5005;
constexpr int RTINPUTTRUNCATED = -5008;

using ads_real = double;
using ads_point = ads_real[3];
using ads_name = int64_t[2];  // an entity name: an object id in slot 0

struct ads_binary {
  short clen;
  char* buf;
};

union ads_u_val {
  ads_real rreal;
  ads_real rpoint[3];
  short rint;
  char* rstring;  // UTF-8, owned by the buffer
  int32_t rlong;
  int64_t mnInt64;
  ads_name rlname;
  ads_binary rbinary;
};

// restype is a DXF group code for extended data and xrecords (1000, 1071,
// 1010, ...) or an RT code for command arguments.
struct resbuf {
  resbuf* rbnext;
  short restype;
  ads_u_val resval;
};

// A new zeroed buffer of the given type; release chains with acutRelRb.
resbuf* acutNewRb(int type);
// Releases a whole chain with the strings and binary chunks it owns.
void acutRelRb(resbuf* chain);
// Builds a chain from (type, value) pairs ended by RTNONE or 0. Strings are
// `const char*`, reals `double`, shorts and longs `int`, points `const double*`
// (3 values), entity names `const int64_t*`.
resbuf* acutBuildList(int type, ...);
// A deep copy of a chain.
resbuf* acutDuplicateRb(const resbuf* chain);

// Which member of resval a group code or RT code uses.
enum class ResbufValueKind { kNone, kString, kReal, kPoint, kShort, kLong, kInt64, kName, kBinary };
ResbufValueKind ResbufKindOf(int restype);

struct ResbufDeleter {
  void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using ResbufPtr = std::unique_ptr<resbuf, ResbufDeleter>;

#endif  // FLOORXPORT_HOST_RESBUF_H_
