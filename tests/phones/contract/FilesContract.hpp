#pragma once

#include <gtest/gtest.h>

#include <string>

#include "orlan/platform/FileSystem.hpp"

namespace orlan {

template <class Phone>
class FilesContract : public ::testing::Test {
 protected:
  [[nodiscard]] std::string path(const std::string& name) const {
    return files.cachesDirectory() + "/" + name;
  }
  [[nodiscard]] std::string content(const std::string& name) const {
    const auto read = files.read(path(name));
    return read ? *read : "error: " + read.error().description;
  }

  Phone phone;
  FileSystem& files = phone.platform().files;
};
TYPED_TEST_SUITE_P(FilesContract);

TYPED_TEST_P(FilesContract, WritingReplacesTheWholeFile) {
  using namespace std::string_literals;
  for (const std::string& bytes : {"first, and long"s, "second"s, "\0\xff\n\r\n"s, ""s}) {
    ASSERT_TRUE(this->files.writeAtomically(this->path("file"), bytes));
    EXPECT_EQ(this->content("file"), bytes);
    EXPECT_TRUE(this->files.exists(this->path("file")));
  }
}

TYPED_TEST_P(FilesContract, AppendingNeedsAFile) {
  EXPECT_FALSE(this->files.append(this->path("log"), "lost"));
  EXPECT_FALSE(this->files.exists(this->path("log")));
  ASSERT_TRUE(this->files.writeAtomically(this->path("log"), "1\n"));
  ASSERT_TRUE(this->files.append(this->path("log"), "2\n"));
  ASSERT_TRUE(this->files.append(this->path("log"), ""));
  ASSERT_TRUE(this->files.append(this->path("log"), "3\n"));
  EXPECT_EQ(this->content("log"), "1\n2\n3\n");
}

TYPED_TEST_P(FilesContract, WhatIsNotThereIsAnErrorThatSaysSo) {
  EXPECT_FALSE(this->files.exists(this->path("none")));
  const auto read = this->files.read(this->path("none"));
  ASSERT_FALSE(read);
  EXPECT_NE(read.error().description.find(this->path("none")), std::string::npos) << read.error().description;
  EXPECT_FALSE(this->files.remove(this->path("none")));

  ASSERT_TRUE(this->files.writeAtomically(this->path("file"), "x"));
  ASSERT_TRUE(this->files.remove(this->path("file")));
  EXPECT_FALSE(this->files.exists(this->path("file")));
  EXPECT_FALSE(this->files.read(this->path("file")));
}

TYPED_TEST_P(FilesContract, NothingIsWrittenOutsideTheDirectory) {
  const std::string directory = this->files.cachesDirectory();
  EXPECT_TRUE(directory.starts_with('/') && !directory.ends_with('/')) << directory;
  for (const std::string& path :
       {directory, directory + "/", directory + "/.", directory + "/..", directory + "/../escaped",
        directory + "/none/file", directory + "escaped", std::string("escaped"), std::string()}) {
    EXPECT_FALSE(this->files.writeAtomically(path, "x")) << path;
    EXPECT_FALSE(this->files.append(path, "x")) << path;
    EXPECT_FALSE(this->files.remove(path)) << path;
  }
}

REGISTER_TYPED_TEST_SUITE_P(FilesContract, WritingReplacesTheWholeFile, AppendingNeedsAFile,
                            WhatIsNotThereIsAnErrorThatSaysSo, NothingIsWrittenOutsideTheDirectory);

}  // namespace orlan
