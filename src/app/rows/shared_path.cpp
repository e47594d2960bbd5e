#include "app/rows/shared_path.h"

#include <functional>
#include <utility>

#include "swr/text/text.h"

namespace app {
namespace {

// The size of the part before the name, with the separator.
size_t ParentSize(std::u16string_view path) {
  const size_t separator = path.find_last_of(u"\\/");
  return separator == path.npos ? 0 : separator + 1;
}

}  // namespace

size_t FolderTexts::Hash::operator()(const FolderText& text) const {
  return std::hash<std::u16string_view>()(*text);
}

void FolderTexts::Share(FolderText& text) {
  if (last_ == text) return;
  if (!last_ || *last_ != *text) last_ = *texts_.insert(text).first;
  text = last_;
}

FolderText FolderTexts::Share(std::u16string_view text) {
  if (!last_ || *last_ != text) {
    last_ = *texts_.insert(std::make_shared<const std::u16string>(text)).first;
  }
  return last_;
}

void FolderTexts::DropUnused() {
  last_.reset();
  std::erase_if(texts_, [](const FolderText& text) { return text.use_count() == 1; });
}

SharedPath::SharedPath(std::u16string_view path) {
  const size_t parentSize = ParentSize(path);
  if (parentSize > 0) parent_ = std::make_shared<const std::u16string>(path.substr(0, parentSize));
  name_ = path.substr(parentSize);
}

SharedPath::SharedPath(std::u16string_view path, FolderTexts& texts) {
  const size_t parentSize = ParentSize(path);
  if (parentSize > 0) parent_ = texts.Share(path.substr(0, parentSize));
  name_ = path.substr(parentSize);
}

std::u16string_view SharedPath::Parent() const {
  return parent_ ? std::u16string_view(*parent_) : std::u16string_view();
}

std::u16string_view SharedPath::Folder() const {
  return parent_ ? Parent().substr(0, parent_->size() - 1) : std::u16string_view();
}

void SharedPath::AppendTo(std::u16string& text) const {
  text += Parent();
  text += name_;
}

std::u16string SharedPath::Text() const {
  std::u16string text;
  text.reserve(Size());
  AppendTo(text);
  return text;
}

bool SharedPath::EqualsNoCase(const SharedPath& other) const {
  return swr::EqualsNoCase(name_, other.name_) &&
         (parent_ == other.parent_ || swr::EqualsNoCase(Parent(), other.Parent()));
}

bool SharedPath::EqualsNoCase(std::u16string_view path) const {
  const size_t parentSize = Parent().size();
  return path.size() == Size() && swr::EqualsNoCase(path.substr(parentSize), name_) &&
         swr::EqualsNoCase(path.substr(0, parentSize), Parent());
}

uint64_t SharedPath::CaseHash() const { return swr::CaseHash(name_, swr::CaseHash(Parent())); }

void SharedPath::ShareFolder(FolderTexts& texts) {
  if (parent_) texts.Share(parent_);
}

}  // namespace app
