#include "swr/system/errno_posix.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include "swr/system/error_codes.h"

namespace swr::testing {
namespace {

struct ErrnoCase {
  int value;
  uint32_t error;
};

const ErrnoCase errnoCases[] = {
    {ENOENT, ErrorFileNotFound},      {ENOTDIR, ErrorPathNotFound},
    {EACCES, ErrorAccessDenied},      {EPERM, ErrorAccessDenied},
    {EISDIR, ErrorIsDirectory},       {EMFILE, ErrorTooManyOpenFiles},
    {ENFILE, ErrorTooManyOpenFiles},  {EBADF, ErrorInvalidHandle},
    {ENOMEM, ErrorNotEnoughMemory},   {ENXIO, ErrorNotReady},
    {ENODEV, ErrorNotReady},          {ETXTBSY, ErrorSharingViolation},
    {EBUSY, ErrorSharingViolation},   {ESTALE, ErrorNetworkNameGone},
    {ENOTCONN, ErrorNetworkNameGone}, {ECONNRESET, ErrorNetworkNameGone},
    {EPIPE, ErrorBrokenPipe},         {ENOSPC, ErrorDiskFull},
    {EDQUOT, ErrorDiskFull},          {EINVAL, ErrorInvalidName},
    {EILSEQ, ErrorInvalidName},       {ENAMETOOLONG, ErrorNameTooLong},
    {EFBIG, ErrorFileTooLarge},       {EOVERFLOW, ErrorFileTooLarge},
    {ELOOP, ErrorLinkLoop},           {EIO, ErrorIoDevice},
    {ENOTSUP, ErrorNotSupported},
};

TEST(ErrnoTest, BecomesAWindowsError) {
  for (const ErrnoCase& row : errnoCases) {
    EXPECT_EQ(ErrorFromErrno(row.value), row.error) << strerror(row.value);
  }
}

TEST(ErrnoTest, NeverBecomesSuccessOrTheEndOfAFile) {
  for (int value = 1; value < 200; ++value) {
    EXPECT_NE(ErrorFromErrno(value), ErrorNone) << value;
    EXPECT_NE(ErrorFromErrno(value), ErrorHandleEof) << value;
  }
}

}  // namespace
}  // namespace swr::testing
