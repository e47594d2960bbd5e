#include "tests/kit/record_bytes.h"

#include <gtest/gtest.h>

#include <string>

namespace kit {
namespace {

using namespace std::string_literals;

TEST(RecordBytesTest, ReadsWhatWasWritten) {
  RecordWriter writer;
  writer.Add("text\0with a zero"s);
  writer.AddNumber(0xFEDC'BA98'7654'3210);
  writer.Add("");
  RecordReader reader(writer.Bytes());
  EXPECT_EQ(reader.Next(), "text\0with a zero"s);
  EXPECT_EQ(reader.NextNumber(), 0xFEDC'BA98'7654'3210);
  EXPECT_FALSE(reader.IsAtEnd());
  EXPECT_EQ(reader.Next(), "");
  EXPECT_TRUE(reader.IsAtEnd());
}

TEST(RecordBytesTest, RejectsATruncatedRecord) {
  RecordWriter writer;
  writer.Add("text");
  for (size_t length = 0; length < writer.Bytes().size(); ++length) {
    RecordReader reader(std::string_view(writer.Bytes()).substr(0, length));
    EXPECT_THROW(reader.Next(), std::runtime_error) << length;
  }
  // A length larger than any memory.
  RecordWriter huge;
  huge.AddNumber(~uint64_t{0});
  RecordReader reader(huge.Bytes());
  EXPECT_THROW(reader.Next(), std::runtime_error);
}

}  // namespace
}  // namespace kit
