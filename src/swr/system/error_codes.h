// The Windows error codes that the core refers to. Errors are these codes, as uint32_t, on every
// platform; they become text only for display. Values: winerror.h of the Windows SDK.
#pragma once

#include <cstdint>

namespace swr {

inline constexpr uint32_t ErrorNone = 0;
inline constexpr uint32_t ErrorFileNotFound = 2;
inline constexpr uint32_t ErrorPathNotFound = 3;
inline constexpr uint32_t ErrorTooManyOpenFiles = 4;
inline constexpr uint32_t ErrorAccessDenied = 5;
inline constexpr uint32_t ErrorInvalidHandle = 6;
inline constexpr uint32_t ErrorNotEnoughMemory = 8;
inline constexpr uint32_t ErrorNotReady = 21;
inline constexpr uint32_t ErrorCrc = 23;
inline constexpr uint32_t ErrorSharingViolation = 32;
inline constexpr uint32_t ErrorHandleEof = 38;
inline constexpr uint32_t ErrorNotSupported = 50;
inline constexpr uint32_t ErrorNetworkNameGone = 64;
inline constexpr uint32_t ErrorBrokenPipe = 109;
inline constexpr uint32_t ErrorDiskFull = 112;
inline constexpr uint32_t ErrorInvalidName = 123;
inline constexpr uint32_t ErrorNameTooLong = 206;
inline constexpr uint32_t ErrorFileTooLarge = 223;
inline constexpr uint32_t ErrorIsDirectory = 267;
inline constexpr uint32_t ErrorIoDevice = 1117;
inline constexpr uint32_t ErrorLinkLoop = 1921;

// Whether the error means that the path does not exist.
constexpr bool IsMissingError(uint32_t error) {
  return error == ErrorFileNotFound || error == ErrorPathNotFound;
}

}  // namespace swr
