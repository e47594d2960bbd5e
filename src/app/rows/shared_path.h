// Paths that share the texts of their folders: in a long list most of a path is its folder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>

namespace app {

// The text of a folder with the separator at its end; shared, and never changed.
using FolderText = std::shared_ptr<const std::u16string>;

// The texts of the folders of many paths, each stored once. Used by one thread at a time.
class FolderTexts {
 public:
  // The first replaces the text with the equal one that is stored; the second returns that one. If
  // there is none, they store the text.
  void Share(FolderText& text);
  FolderText Share(std::u16string_view text);
  // Drops the texts that no path uses any more. Goes over all texts.
  void DropUnused();
  size_t Size() const { return texts_.size(); }

 private:
  struct Hash {
    size_t operator()(const FolderText& text) const;
  };
  struct Equal {
    bool operator()(const FolderText& a, const FolderText& b) const { return *a == *b; }
  };
  std::unordered_set<FolderText, Hash, Equal> texts_;
  FolderText last_;  // files of one folder usually arrive one after another
};

// A path, which may be any text. It is split after its last backslash or slash.
class SharedPath {
 public:
  SharedPath() = default;
  SharedPath(std::u16string_view path);
  SharedPath(const std::u16string& path) : SharedPath(std::u16string_view(path)) {}
  SharedPath(const char16_t* path) : SharedPath(std::u16string_view(path)) {}
  // With the text that `texts` has for the folder.
  SharedPath(std::u16string_view path, FolderTexts& texts);

  // The path exactly as it was given.
  std::u16string Text() const;
  void AppendTo(std::u16string& text) const;
  size_t Size() const { return Parent().size() + name_.size(); }
  // The part after the last separator, or the whole path.
  const std::u16string& Name() const { return name_; }
  // The part before that separator; empty without one.
  std::u16string_view Folder() const;

  // Whether the paths are equal ignoring case, like swr::EqualsNoCase of their texts.
  bool EqualsNoCase(const SharedPath& other) const;
  bool EqualsNoCase(std::u16string_view path) const;
  // swr::CaseHash of the text.
  uint64_t CaseHash() const;

  // Lets the path use the text that `texts` has for its folder.
  void ShareFolder(FolderTexts& texts);

 private:
  std::u16string_view Parent() const;  // with the separator

  FolderText parent_;  // null without a separator
  std::u16string name_;
};

}  // namespace app
