#include "cli/select/line_source.h"

#include <algorithm>

#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/name_bytes.h"
#include "swr/text/encoding.h"

namespace cli {
namespace {

constexpr size_t PieceSize = 65536;

}  // namespace

uint32_t LineSource::Open(const std::u16string& path, char separator) {
  separator_ = separator;
  const uint32_t error =
      path == u"-" ? swr::File::OpenStandardInput(file_)
                   : swr::File::Open(swr::ToLongPath(path), swr::FileSharing::ReadWrite, file_);
  if (error != 0) {
    return error == swr::ErrorAccessDenied && swr::IsDirectoryPath(path) ? swr::ErrorIsDirectory
                                                                         : error;
  }
  if (const auto info = file_.Info(); info && info->isDirectory) return swr::ErrorIsDirectory;
  while (pending_.size() < 3 && Fill()) {
  }
  if (error_ != 0) return error_;
  TakeMark();
  return 0;
}

void LineSource::TakeMark() {
  const std::string_view text = pending_;
  size_t length = 0;
  if (text.starts_with("\xEF\xBB\xBF")) {
    length = 3;
  } else if (text.starts_with("\xFF\xFE")) {
    length = 2;
    encoding_ = Encoding::Utf16LowFirst;
  } else if (text.starts_with("\xFE\xFF")) {
    length = 2;
    encoding_ = Encoding::Utf16HighFirst;
  }
  mark_ = text.substr(0, length);
  start_ = length;
}

bool LineSource::Fill() {
  if (atEnd_) return false;
  if (start_ > 0) {
    pending_.erase(0, start_);
    start_ = 0;
  }
  const size_t before = pending_.size();
  pending_.resize(before + PieceSize);
  const swr::ReadResult read = file_.Read(pending_.data() + before, PieceSize);
  pending_.resize(before + (read.succeeded ? read.bytes : 0));
  const bool endsLikeFile =
      !read.succeeded && (read.error == swr::ErrorBrokenPipe || read.error == swr::ErrorHandleEof);
  if (!read.succeeded && !endsLikeFile) error_ = read.error;
  atEnd_ = !read.succeeded || read.bytes == 0;
  return pending_.size() > before;
}

size_t LineSource::FindSeparator(size_t from) const {
  if (encoding_ == Encoding::Bytes) return pending_.find(separator_, from);
  const size_t low = encoding_ == Encoding::Utf16LowFirst ? 0 : 1;
  for (size_t i = from; i + 1 < pending_.size(); i += 2) {
    if (pending_[i + low] == separator_ && pending_[i + 1 - low] == '\0') return i;
  }
  return pending_.npos;
}

std::u16string LineSource::Decode(std::string_view bytes) const {
  if (encoding_ == Encoding::Bytes) return swr::TextFromNameBytes(bytes);
  return swr::DecodeTextBytes(mark_ + std::string(bytes));
}

bool LineSource::Next(std::u16string& line) {
  Taken taken;
  if (!TakeLine(LongestLine, taken)) return false;
  line = Decode(taken.text);
  return true;
}

bool LineSource::Next(std::u16string& line, std::string& bytes) {
  Taken taken;
  if (!TakeLine(pending_.npos, taken)) return false;
  line = Decode(taken.text);
  bytes = taken.whole;
  return true;
}

bool LineSource::TakeLine(size_t longest, Taken& taken) {
  const size_t width = encoding_ == Encoding::Bytes ? 1 : 2;
  size_t end = FindSeparator(start_);
  while (end == pending_.npos) {
    size_t searched = (pending_.size() - start_) / width * width;
    if (searched > longest) {
      // Bytes beyond the limit are dropped, except the second half of a UTF-16 unit.
      pending_.erase(start_ + longest, searched - longest);
      searched = longest;
    }
    if (!Fill()) break;
    end = FindSeparator(start_ + searched);
  }
  if (error_ != 0 || start_ == pending_.size()) return false;
  const bool isLast = end == pending_.npos;
  const size_t length = (isLast ? pending_.size() : end) - start_;
  const std::string_view rest = std::string_view(pending_).substr(start_);
  taken.text = rest.substr(0, std::min(length, longest));
  taken.whole = rest.substr(0, isLast ? length : length + width);
  start_ += taken.whole.size();
  return true;
}

}  // namespace cli
