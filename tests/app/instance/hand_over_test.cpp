#include "app/instance/hand_over.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/fake_instances.h"

namespace app {
namespace {

using testing::FakeInstances;
using Paths = std::vector<std::u16string>;
using namespace std::string_literals;

std::vector<std::byte> BytesOf(const std::u16string& text) {
  const auto bytes = std::as_bytes(std::span(text.data(), text.size()));
  return {bytes.begin(), bytes.end()};
}

std::optional<Paths> Read(const std::u16string& payload) {
  return ReadHandOver(HandOverMark, BytesOf(payload));
}

TEST(HandOverPayloadTest, EachPathHasOneTerminator) {
  EXPECT_EQ(HandOverPayload({}), u"");
  EXPECT_EQ(HandOverPayload({u"C:\\a.txt", u"C:\\b"}), u"C:\\a.txt\0C:\\b\0"s);
  EXPECT_EQ(BytesOf(HandOverPayload({u"C:\\a.txt", u"C:\\b"})).size(), 28u);
  EXPECT_EQ(HandOverPayload({u""}), u"\0"s);
}

TEST(HandOverPayloadTest, IsReadPathByPath) {
  const std::vector<std::pair<std::u16string, Paths>> rows = {
      {u"", {}},
      {u"\0"s, {}},
      {u"\0\0\0"s, {}},
      {u"a", {u"a"}},
      {u"a\0"s, {u"a"}},
      {u"a\0\0b"s, {u"a", u"b"}},
      {u"\0a\0"s, {u"a"}},
      {u"C:\\a.txt\0C:\\b\0"s, {u"C:\\a.txt", u"C:\\b"}},
      {u"C:\\\xD83D\xDE00\0\xD83D\0"s, {u"C:\\\xD83D\xDE00", u"\xD83D"}},
  };
  for (const auto& [payload, paths] : rows) EXPECT_EQ(Read(payload), paths);
}

TEST(HandOverPayloadTest, RoundTrips) {
  const Paths paths = {u"C:\\a.txt", u"\\\\server\\share\\b c.bin", u"Z:\\\u00E9\U0001F600"};
  EXPECT_EQ(Read(HandOverPayload(paths)), paths);
}

TEST(HandOverPayloadTest, AForeignMarkOrAnOddLengthIsRejected) {
  const std::vector<std::byte> payload = BytesOf(u"C:\\a.txt\0"s);
  EXPECT_EQ(HandOverMark, 0x53575250u);
  for (const uint64_t mark :
       {uint64_t{0}, HandOverMark + 1, HandOverMark | uint64_t{1} << 32, ~uint64_t{0}}) {
    EXPECT_EQ(ReadHandOver(mark, payload), std::nullopt);
  }
  EXPECT_EQ(ReadHandOver(HandOverMark, std::span(payload).first(payload.size() - 1)), std::nullopt);
  EXPECT_EQ(ReadHandOver(HandOverMark, std::span(payload).first(1)), std::nullopt);
}

TEST(HandOverPayloadTest, MayBeUnaligned) {
  const std::vector<std::byte> payload = BytesOf(u"C:\\a.txt\0C:\\b"s);
  std::vector<std::byte> shifted(payload.size() + 1);
  std::memcpy(shifted.data() + 1, payload.data(), payload.size());
  EXPECT_EQ(ReadHandOver(HandOverMark, std::span(shifted).subspan(1)),
            (Paths{u"C:\\a.txt", u"C:\\b"}));
}

struct ForwardTest : ::testing::Test {
  FakeInstances instances;
  bool Forward(const Paths& paths = {u"a"}) { return ForwardToFirstInstance(instances, paths); }
};

TEST_F(ForwardTest, PathsGoToTheOpenWindow) {
  instances.fullPaths = {{u"a.txt", u"C:\\here\\a.txt"}};
  EXPECT_TRUE(Forward({u"a.txt", u"what can't be made full"}));
  EXPECT_EQ(instances.deliveries,
            (std::vector<std::pair<uint64_t, std::u16string>>{
                {instances.window, u"C:\\here\\a.txt\0what can't be made full\0"s}}));
  EXPECT_EQ(instances.waits, 0);
}

TEST_F(ForwardTest, TheFirstProcessKeepsItsPathsAndCreatesTheMutex) {
  instances.anotherExists = false;
  EXPECT_FALSE(Forward());
  EXPECT_TRUE(instances.mutexIsOpen);
  EXPECT_TRUE(instances.deliveries.empty());
  EXPECT_EQ(instances.waits, 0);
}

TEST_F(ForwardTest, WithoutPathsAnotherWindowOpens) {
  EXPECT_FALSE(Forward({}));
  EXPECT_TRUE(instances.mutexIsOpen);
  EXPECT_TRUE(instances.deliveries.empty());
  EXPECT_EQ(instances.waits, 0);
}

TEST_F(ForwardTest, WaitsForAWindowThatIsNotOpenYet) {
  instances.publishedAfter = 49;
  EXPECT_TRUE(Forward());
  EXPECT_EQ(instances.waits, 49);
}

TEST_F(ForwardTest, AfterFiftyTriesThePathsStayHere) {
  instances.publishedAfter = 50;
  EXPECT_FALSE(Forward());
  EXPECT_EQ(instances.waits, 50);
  EXPECT_TRUE(instances.deliveries.empty());
}

TEST_F(ForwardTest, ADeadWindowIsTreatedAsNone) {
  instances.aliveAfter = 3;
  EXPECT_TRUE(Forward());
  EXPECT_EQ(instances.waits, 3);

  FakeInstances dead;
  dead.aliveAfter = 1000;
  EXPECT_FALSE(ForwardToFirstInstance(dead, {u"a"}));
  EXPECT_EQ(dead.waits, 50);
  EXPECT_TRUE(dead.deliveries.empty());
}

TEST_F(ForwardTest, PathsThatAreNotAcceptedStayHere) {
  instances.accepts = false;
  EXPECT_FALSE(Forward());
  EXPECT_EQ(instances.deliveries.size(), 1u);
}

}  // namespace
}  // namespace app
