#include "host/status.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Acad {
namespace {

#define FX_STATUS(name) std::pair{name, #name}
constexpr std::array kStatusTexts = {
    FX_STATUS(eOk),
    FX_STATUS(eNotImplementedYet),
    FX_STATUS(eNotApplicable),
    FX_STATUS(eInvalidInput),
    FX_STATUS(eNotThatKindOfClass),
    FX_STATUS(eAmbiguousInput),
    FX_STATUS(eOutOfMemory),
    FX_STATUS(eBufferTooSmall),
    FX_STATUS(eInvalidOpenState),
    FX_STATUS(eEntityInInactiveLayout),
    FX_STATUS(eHandleExists),
    FX_STATUS(eNullHandle),
    FX_STATUS(eInvalidExtents),
    FX_STATUS(eNotInDatabase),
    FX_STATUS(eNullObjectId),
    FX_STATUS(eNullObjectPointer),
    FX_STATUS(eNullEntityPointer),
    FX_STATUS(eIllegalReplacement),
    FX_STATUS(eInvalidIndex),
    FX_STATUS(eInvalidDxfCode),
    FX_STATUS(eNotAllowedForThisProxy),
    FX_STATUS(eDuplicateKey),
    FX_STATUS(eKeyNotFound),
    FX_STATUS(eDuplicateRecordName),
    FX_STATUS(eFileAccessErr),
    FX_STATUS(eFileNotFound),
    FX_STATUS(eWasErased),
    FX_STATUS(ePermanentlyErased),
    FX_STATUS(eWasOpenForRead),
    FX_STATUS(eWasOpenForWrite),
    FX_STATUS(eWasNotOpenForWrite),
    FX_STATUS(eWasOpenForNotify),
    FX_STATUS(eWasNotifying),
    FX_STATUS(eWasOpenForUndo),
    FX_STATUS(eAtMaxReaders),
    FX_STATUS(eWasNotErased),
    FX_STATUS(eNotAnEntity),
    FX_STATUS(eInvalidBlockName),
    FX_STATUS(eDwgNeedsRecovery),
    FX_STATUS(eDeleteEntity),
    FX_STATUS(eInvalidLayer),
    FX_STATUS(eOnLockedLayer),
    FX_STATUS(eSelfReference),
    FX_STATUS(eCannotBeErasedByCaller),
    FX_STATUS(eFileSharingViolation),
    FX_STATUS(eBadDxfFile),
    FX_STATUS(eEndOfFile),
    FX_STATUS(eCouldNotOpenFile),
    FX_STATUS(eNotAllowedForThisType),
    FX_STATUS(eInvalidDwgVersion),
    FX_STATUS(eFileWriteError),
    FX_STATUS(eNotSupportedInDwgApi),
    FX_STATUS(eInvalidContext),
    FX_STATUS(eUnsupportedFileFormat),
    FX_STATUS(eInvalidObjectId),
    FX_STATUS(eInternalError),
};
#undef FX_STATUS

}  // namespace

const char* acadErrorStatusText(ErrorStatus status) {
  auto it = std::find_if(kStatusTexts.begin(), kStatusTexts.end(),
                         [status](const auto& entry) { return entry.first == status; });
  return it == kStatusTexts.end() ? "Unknown error" : it->second;
}

}  // namespace Acad
