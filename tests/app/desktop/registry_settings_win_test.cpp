// The settings in a real registry, under a key that replaces the user's and is removed afterwards.
#include "app/desktop/registry_settings_win.h"

#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

#include "swr/system/wide_text_win.h"
#include "tests/support/every_fault.h"

namespace app::testing {
namespace {

using swr::SystemCall;
using swr::testing::HasFailed;
using swr::testing::MaybeFailed;

// While it exists, HKEY_CURRENT_USER is an empty key.
class OtherUser {
 public:
  OtherUser() {
    RegDeleteTreeW(HKEY_CURRENT_USER, Place);
    EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, Place, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              &key_, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, key_), ERROR_SUCCESS);
  }
  ~OtherUser() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(key_);
    RegDeleteTreeW(HKEY_CURRENT_USER, Place);
  }
  OtherUser(const OtherUser&) = delete;
  OtherUser& operator=(const OtherUser&) = delete;

 private:
  static constexpr wchar_t Place[] = L"Software\\SumwrightTest";
  HKEY key_ = nullptr;
};

TEST(RegistrySettingsTest, ReadsWhatItWrote) {
  const OtherUser user;
  RegistrySettings settings;
  std::array<uint8_t, 4> bytes = {};
  EXPECT_EQ(settings.ReadDwordSetting(u"Number"), std::nullopt);
  EXPECT_FALSE(settings.ReadBinarySetting(u"Bytes", bytes));
  settings.WriteDwordSetting(u"Number", 0xFEDCBA98);
  settings.WriteBinarySetting(u"Bytes", std::array<uint8_t, 4>{1, 0, 255, 3});
  EXPECT_EQ(settings.ReadDwordSetting(u"Number"), 0xFEDCBA98);
  EXPECT_TRUE(settings.ReadBinarySetting(u"Bytes", bytes));
  EXPECT_EQ(bytes, (std::array<uint8_t, 4>{1, 0, 255, 3}));

  std::array<uint8_t, 3> shorter = {7, 7, 7};
  EXPECT_FALSE(settings.ReadBinarySetting(u"Bytes", shorter));
  std::array<uint8_t, 5> longer = {7, 7, 7, 7, 7};
  EXPECT_FALSE(settings.ReadBinarySetting(u"Bytes", longer));
  EXPECT_EQ(shorter, (std::array<uint8_t, 3>{7, 7, 7})) << "unchanged";
  EXPECT_EQ(longer, (std::array<uint8_t, 5>{7, 7, 7, 7, 7}));
  EXPECT_EQ(settings.ReadDwordSetting(u"Bytes"), std::nullopt) << "of another type";
  EXPECT_FALSE(settings.ReadBinarySetting(u"Number", bytes));
}

// A value that can't be read is treated as missing, one that can't be written is unchanged, and
// neither affects other values.
class SettingsScenario {
 public:
  SettingsScenario() {
    settings_.WriteDwordSetting(u"Number", 1);
    settings_.WriteBinarySetting(u"Bytes", std::array<uint8_t, 1>{1});
  }
  void Run() {
    number_ = settings_.ReadDwordSetting(u"Number");
    hasBytes_ = settings_.ReadBinarySetting(u"Bytes", bytes_);
    settings_.WriteDwordSetting(u"Number", 2);
    settings_.WriteBinarySetting(u"Bytes", std::array<uint8_t, 1>{2});
  }
  void Check(const MaybeFailed& failed) {
    const auto isUnread = [&](uint32_t nth) {
      return HasFailed(failed, SystemCall::ReadSetting, nth);
    };
    EXPECT_EQ(number_, isUnread(1) ? std::nullopt : std::optional<uint32_t>(1));
    EXPECT_EQ(hasBytes_, !isUnread(2));
    EXPECT_EQ(bytes_[0], isUnread(2) ? 77 : 1);
    EXPECT_EQ(settings_.ReadDwordSetting(u"Number"),
              HasFailed(failed, SystemCall::WriteSetting, 1) ? 1u : 2u);
    EXPECT_TRUE(settings_.ReadBinarySetting(u"Bytes", bytes_));
    EXPECT_EQ(bytes_[0], HasFailed(failed, SystemCall::WriteSetting, 2) ? 1 : 2);
  }

 private:
  OtherUser user_;
  RegistrySettings settings_;
  std::optional<uint32_t> number_;
  bool hasBytes_ = false;
  std::array<uint8_t, 1> bytes_ = {77};
};

TEST(RegistrySettingsTest, EachCallFailsWithEachCode) {
  swr::testing::FailEachCall<SettingsScenario>();
}

}  // namespace
}  // namespace app::testing
