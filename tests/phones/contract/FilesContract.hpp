#pragma once

#include <gtest/gtest.h>

#include <string>

#include "orlan/platform/FileSystem.hpp"

namespace orlan {

template <class Phone>
class FilesContract : public ::testing::Test {
 protected:
  Phone phone;
  FileSystem& files = phone.platform().files;
  const std::string directory = files.cachesDirectory();
  const std::string file = directory + "/file";
};
TYPED_TEST_SUITE_P(FilesContract);

TYPED_TEST_P(FilesContract, WritingReplacesTheWholeFile) {
  using namespace std::string_literals;
  for (const std::string& bytes : {"first, and long"s, "second"s, "\0\xff\n\r\n"s, ""s}) {
    ASSERT_TRUE(this->files.writeAtomically(this->file, bytes));
    EXPECT_EQ(this->files.read(this->file).value_or("unreadable"), bytes);
    EXPECT_TRUE(this->files.exists(this->file));
  }
}

TYPED_TEST_P(FilesContract, WhatIsNotThereIsOnlyMadeByWriting) {
  for (const char* why : {"it never was", "it was removed"}) {
    EXPECT_FALSE(this->files.append(this->file, "lost")) << why;
    EXPECT_FALSE(this->files.remove(this->file)) << why;
    EXPECT_FALSE(this->files.exists(this->file)) << why;
    const auto read = this->files.read(this->file);
    ASSERT_FALSE(read) << why;
    EXPECT_NE(read.error().description.find(this->file), std::string::npos) << read.error().description;

    ASSERT_TRUE(this->files.writeAtomically(this->file, "1\n"));
    for (const char* more : {"2\n", "", "3\n"}) ASSERT_TRUE(this->files.append(this->file, more));
    EXPECT_EQ(this->files.read(this->file).value_or("unreadable"), "1\n2\n3\n");
    ASSERT_TRUE(this->files.remove(this->file));
  }
}

TYPED_TEST_P(FilesContract, NothingIsWrittenOutsideTheDirectory) {
  using namespace std::string_literals;
  EXPECT_TRUE(this->directory.starts_with('/') && !this->directory.ends_with('/')) << this->directory;
  for (const auto& name : {""s, "/"s, "/."s, "/.."s, "/../escaped"s, "/none/file"s, "escaped"s, "/a\0b"s}) {
    EXPECT_FALSE(this->files.writeAtomically(this->directory + name, "x")) << name;
    EXPECT_FALSE(this->files.append(this->directory + name, "x")) << name;
    EXPECT_FALSE(this->files.remove(this->directory + name)) << name;
  }
  for (const char* elsewhere : {"", "escaped"}) EXPECT_FALSE(this->files.writeAtomically(elsewhere, "x"));
}

REGISTER_TYPED_TEST_SUITE_P(FilesContract, WritingReplacesTheWholeFile, WhatIsNotThereIsOnlyMadeByWriting,
                            NothingIsWrittenOutsideTheDirectory);

}  // namespace orlan
