// Status codes of the host API. Names and texts follow the editor's own
// Acad::ErrorStatus so that messages printed by the plug-in read the same in
// every host ("\nacdbOpenObject = eKeyNotFound").
#ifndef FLOORXPORT_HOST_STATUS_H_
#define FLOORXPORT_HOST_STATUS_H_

namespace Acad {

enum ErrorStatus : int {
  eOk = 0,
  eNotImplementedYet = 1,
  eNotApplicable = 2,
  eInvalidInput = 3,
  eNotThatKindOfClass = 4,
  eAmbiguousInput = 5,
  eOutOfMemory = 7,
  eBufferTooSmall = 8,
  eInvalidOpenState = 9,
  eEntityInInactiveLayout = 10,
  eHandleExists = 11,
  eNullHandle = 12,
  eInvalidExtents = 16,
  eNotInDatabase = 18,
  eNullObjectId = 19,
  eNullObjectPointer = 23,
  eNullEntityPointer = 27,
  eIllegalReplacement = 30,
  eInvalidIndex = 32,
  eInvalidDxfCode = 37,
  eNotAllowedForThisProxy = 40,
  eDuplicateKey = 41,
  eKeyNotFound = 52,
  eDuplicateRecordName = 56,
  eFileAccessErr = 58,
  eFileNotFound = 60,
  eWasErased = 80,
  ePermanentlyErased = 81,
  eWasOpenForRead = 82,
  eWasOpenForWrite = 83,
  eWasNotOpenForWrite = 84,
  eWasOpenForNotify = 85,
  eWasNotifying = 86,
  eWasOpenForUndo = 87,
  eAtMaxReaders = 96,
  eWasNotErased = 100,
  eNotAnEntity = 126,
  eInvalidBlockName = 133,
  eDwgNeedsRecovery = 140,
  eDeleteEntity = 141,
  eInvalidLayer = 144,
  eOnLockedLayer = 161,
  eSelfReference = 169,
  eCannotBeErasedByCaller = 246,
  eFileSharingViolation = 298,
  eBadDxfFile = 300,
  eEndOfFile = 301,
  eCouldNotOpenFile = 302,
  eNotAllowedForThisType = 303,
  eInvalidDwgVersion = 356,
  eFileWriteError = 382,
  eNotSupportedInDwgApi = 440,
  eInvalidContext = 442,
  eUnsupportedFileFormat = 458,
  eInvalidObjectId = 466,
  eInternalError = 502,
};

// The status's name ("eKeyNotFound"), or "Unknown error" for a code not in
// the table. Never null; the text has static storage.
const char* acadErrorStatusText(ErrorStatus status);

}  // namespace Acad

#endif  // FLOORXPORT_HOST_STATUS_H_
