#include "host/resbuf.h"

#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace {

char* CopyString(const char* text) {
  if (text == nullptr) text = "";
  size_t size = std::strlen(text) + 1;
  char* copy = static_cast<char*>(std::malloc(size));
  std::memcpy(copy, text, size);
  return copy;
}

}  // namespace

ResbufValueKind ResbufKindOf(int t) {
  switch (t) {
    case RTREAL: case RTANG: return ResbufValueKind::kReal;
    case RTPOINT: case RT3DPOINT: return ResbufValueKind::kPoint;
    case RTSHORT: return ResbufValueKind::kShort;
    case RTSTR: return ResbufValueKind::kString;
    case RTENAME: case RTPICKS: return ResbufValueKind::kName;
    case RTLONG: return ResbufValueKind::kLong;
    case RTNONE: case RTLB: case RTLE: case RTVOID: case RTDXF0: return ResbufValueKind::kNone;
    default: break;
  }
  // DXF group code ranges.
  if (t >= 0 && t <= 9) return ResbufValueKind::kString;
  if (t >= 10 && t <= 17) return ResbufValueKind::kPoint;
  if (t >= 38 && t <= 59) return ResbufValueKind::kReal;
  if (t >= 60 && t <= 79) return ResbufValueKind::kShort;
  if (t >= 90 && t <= 99) return ResbufValueKind::kLong;
  if (t == 100 || t == 101 || t == 102 || t == 105) return ResbufValueKind::kString;
  if (t >= 110 && t <= 112) return ResbufValueKind::kPoint;
  if (t >= 140 && t <= 149) return ResbufValueKind::kReal;
  if (t >= 160 && t <= 169) return ResbufValueKind::kInt64;
  if (t >= 170 && t <= 179) return ResbufValueKind::kShort;
  if (t >= 210 && t <= 219) return ResbufValueKind::kPoint;
  if (t >= 270 && t <= 299) return ResbufValueKind::kShort;
  if (t >= 300 && t <= 309) return ResbufValueKind::kString;
  if (t >= 310 && t <= 319) return ResbufValueKind::kBinary;
  if (t >= 320 && t <= 369) return ResbufValueKind::kString;
  if (t >= 370 && t <= 389) return ResbufValueKind::kShort;
  if (t >= 390 && t <= 399) return ResbufValueKind::kString;
  if (t >= 400 && t <= 409) return ResbufValueKind::kShort;
  if (t >= 410 && t <= 419) return ResbufValueKind::kString;
  if (t >= 420 && t <= 429) return ResbufValueKind::kLong;
  if (t >= 430 && t <= 439) return ResbufValueKind::kString;
  if (t >= 440 && t <= 459) return ResbufValueKind::kLong;
  if (t >= 460 && t <= 469) return ResbufValueKind::kReal;
  if (t >= 470 && t <= 481) return ResbufValueKind::kString;
  if (t == 999) return ResbufValueKind::kString;
  if (t >= 1000 && t <= 1003) return ResbufValueKind::kString;
  if (t == 1004) return ResbufValueKind::kBinary;
  if (t >= 1005 && t <= 1009) return ResbufValueKind::kString;
  if (t >= 1010 && t <= 1039) return ResbufValueKind::kPoint;
  if (t >= 1040 && t <= 1059) return ResbufValueKind::kReal;
  if (t >= 1060 && t <= 1070) return ResbufValueKind::kShort;
  if (t == 1071) return ResbufValueKind::kLong;
  return ResbufValueKind::kNone;
}

resbuf* acutNewRb(int type) {
  auto* rb = static_cast<resbuf*>(std::calloc(1, sizeof(resbuf)));
  rb->restype = static_cast<short>(type);
  return rb;
}

void acutRelRb(resbuf* chain) {
  while (chain != nullptr) {
    resbuf* next = chain->rbnext;
    switch (ResbufKindOf(chain->restype)) {
      case ResbufValueKind::kString: std::free(chain->resval.rstring); break;
      case ResbufValueKind::kBinary: std::free(chain->resval.rbinary.buf); break;
      default: break;
    }
    std::free(chain);
    chain = next;
  }
}

resbuf* acutBuildList(int type, ...) {
  va_list args;
  va_start(args, type);
  resbuf* head = nullptr;
  resbuf** tail = &head;
  for (; type != RTNONE && type != 0; type = va_arg(args, int)) {
    resbuf* rb = acutNewRb(type);
    switch (ResbufKindOf(type)) {
      case ResbufValueKind::kString: rb->resval.rstring = CopyString(va_arg(args, const char*)); break;
      case ResbufValueKind::kReal: rb->resval.rreal = va_arg(args, double); break;
      case ResbufValueKind::kPoint: {
        const double* p = va_arg(args, const double*);
        for (int i = 0; i < 3; ++i) rb->resval.rpoint[i] = p[i];
        break;
      }
      case ResbufValueKind::kShort: rb->resval.rint = static_cast<short>(va_arg(args, int)); break;
      case ResbufValueKind::kLong: rb->resval.rlong = va_arg(args, int); break;
      case ResbufValueKind::kInt64: rb->resval.mnInt64 = va_arg(args, int64_t); break;
      case ResbufValueKind::kName: {
        const int64_t* name = va_arg(args, const int64_t*);
        rb->resval.rlname[0] = name[0];
        rb->resval.rlname[1] = name[1];
        break;
      }
      case ResbufValueKind::kBinary:
      case ResbufValueKind::kNone: break;
    }
    *tail = rb;
    tail = &rb->rbnext;
  }
  va_end(args);
  return head;
}

resbuf* acutDuplicateRb(const resbuf* chain) {
  resbuf* head = nullptr;
  resbuf** tail = &head;
  for (; chain != nullptr; chain = chain->rbnext) {
    resbuf* rb = acutNewRb(chain->restype);
    rb->resval = chain->resval;
    switch (ResbufKindOf(chain->restype)) {
      case ResbufValueKind::kString: rb->resval.rstring = CopyString(chain->resval.rstring); break;
      case ResbufValueKind::kBinary: {
        short size = chain->resval.rbinary.clen;
        rb->resval.rbinary.buf = static_cast<char*>(std::malloc(size > 0 ? size : 1));
        if (size > 0) std::memcpy(rb->resval.rbinary.buf, chain->resval.rbinary.buf, size);
        break;
      }
      default: break;
    }
    *tail = rb;
    tail = &rb->rbnext;
  }
  return head;
}
