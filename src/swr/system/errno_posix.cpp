#include "swr/system/errno_posix.h"

#include <cerrno>

#include "swr/system/error_codes.h"

namespace swr {

uint32_t ErrorFromErrno(int value) {
  switch (value) {
    case ENOENT:
      return ErrorFileNotFound;
    case ENOTDIR:
      return ErrorPathNotFound;
    case EACCES:
    case EPERM:
      return ErrorAccessDenied;
    case EISDIR:
      return ErrorIsDirectory;
    case EMFILE:
    case ENFILE:
      return ErrorTooManyOpenFiles;
    case EBADF:
      return ErrorInvalidHandle;
    case ENOMEM:
      return ErrorNotEnoughMemory;
    case ENXIO:
    case ENODEV:
      return ErrorNotReady;
    case ETXTBSY:
    case EBUSY:
      return ErrorSharingViolation;
    case ENOTCONN:
    case ESTALE:
    case ECONNRESET:
      return ErrorNetworkNameGone;
    case EPIPE:
      return ErrorBrokenPipe;
    case ENOSPC:
    case EDQUOT:
      return ErrorDiskFull;
    case EINVAL:
    case EILSEQ:
      return ErrorInvalidName;
    case ENAMETOOLONG:
      return ErrorNameTooLong;
    case EFBIG:
    case EOVERFLOW:
      return ErrorFileTooLarge;
    case ELOOP:
      return ErrorLinkLoop;
    case EIO:
      return ErrorIoDevice;
    default:
      return ErrorNotSupported;
  }
}

}  // namespace swr
