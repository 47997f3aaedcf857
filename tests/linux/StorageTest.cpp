#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "linux/TemporaryDirectory.hpp"
#include "phones/linux/DiskFiles.hpp"
#include "phones/linux/SqliteStore.hpp"
#include "phones/linux/disk.hpp"

namespace orlan::linuxphone {
namespace {

namespace fs = std::filesystem;

unsigned mode(const std::string& path) {
  struct stat status = {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777U : 0;
}

class StoreTest : public ::testing::Test {
 protected:
  std::unique_ptr<SqliteStore> open() {
    return std::make_unique<SqliteStore>(path, nobody,
                                         [this](const std::string& what) { said.push_back(what); });
  }
  test::TemporaryDirectory directory;
  std::string path = directory.file("store.sqlite");
  phone::PhoneObserver nobody;
  std::vector<std::string> said;
};

TEST_F(StoreTest, EveryValueSurvivesWithItsType) {
  using namespace std::string_literals;
  const json::Object values{
      {"a", true}, {"b", 1}, {"c", 1.0}, {"d", -0.0}, {"g", "\0x"s}, {"h", Bytes{"\xff\0"s}}, {"i", Bytes{}}};
  {
    const auto store = open();
    for (const auto& [key, value] : values) store->set(key, value);
    store->set("nan", std::nan(""));
    store->set("removed", 1);
    store->remove("removed");
  }
  const auto store = open();
  EXPECT_TRUE(std::isnan(store->number("nan").value_or(0)));
  store->remove("nan");
  EXPECT_EQ(store->contents(), values);
  EXPECT_TRUE(std::signbit(*store->number("d")));
  EXPECT_EQ(mode(path), 0600U);
  EXPECT_EQ(mode(path + "-wal"), 0600U);
  EXPECT_TRUE(said.empty());
}

TEST_F(StoreTest, WhatWasWrittenSurvivesKill) {
  for (const std::int64_t number : {1, 2}) {
    const auto dying = [&] {
      const auto store = open();
      store->set("first", "removed");
      store->set("number", number);
      store->remove("first");
      ::raise(SIGKILL);
    };
    EXPECT_EXIT(dying(), ::testing::KilledBySignal(SIGKILL), "");
    EXPECT_EQ(open()->contents(), (json::Object{{"number", number}}));
  }
  EXPECT_TRUE(said.empty());
}

TEST_F(StoreTest, ADamagedFileIsMovedAsideAndTold) {
  open()->set("key", "value");
  const std::string whole = disk::read(path).value_or("");
  std::string ofSomebodyElse = whole;
  ofSomebodyElse.replace(whole.find("type TEXT"), 4, "kind");
  std::string scribbled = whole;
  for (std::size_t i = 200; i < scribbled.size(); i += 3) scribbled[i] = 'x';
  for (const std::string& bytes : {std::string("not a database at all, but long enough to be looked at"),
                                   whole.substr(0, whole.size() / 2), scribbled, ofSomebodyElse}) {
    for (const auto& entry : fs::directory_iterator(directory.path())) fs::remove(entry);
    std::ofstream(path, std::ios::binary) << bytes;
    open()->set("new", true);
    EXPECT_EQ(disk::read(path + ".damaged").value_or(""), bytes);
    EXPECT_EQ(open()->contents(), (json::Object{{"new", true}}));
    EXPECT_EQ(std::exchange(said, {}).size(), 1U);
  }
}

TEST(DiskFilesTest, FilesArePrivateAndNothingElseIsLeft) {
  const test::TemporaryDirectory directory;
  phone::PhoneObserver nobody;
  const std::string caches = directory.file("a/b/caches");
  DiskFiles files(caches, nobody);
  EXPECT_EQ(mode(directory.file("a")), 0700U);
  EXPECT_EQ(mode(caches), 0700U);
  ASSERT_TRUE(files.writeAtomically(caches + "/file", "x"));
  EXPECT_EQ(mode(caches + "/file"), 0600U);

  const std::string inTheWay = caches + "/directory";
  fs::create_directory(inTheWay);
  EXPECT_FALSE(files.writeAtomically(inTheWay, "x"));
  EXPECT_FALSE(files.read(inTheWay));
  EXPECT_FALSE(files.exists(inTheWay));
  EXPECT_FALSE(files.remove(inTheWay));
  EXPECT_EQ(std::distance(fs::directory_iterator(caches), {}), 2);
}

TEST(DiskFilesTest, WhatAKilledWriterLeftIsClearedAwayOnceItIsOld) {
  const test::TemporaryDirectory directory;
  phone::PhoneObserver nobody;
  for (const char* name : {".orlan-new-old", ".orlan-new-young", "kept"})
    std::ofstream(directory.file(name)) << 1;
  const auto old = fs::file_time_type::clock::now() - std::chrono::hours(2);
  fs::last_write_time(directory.file(".orlan-new-old"), old);
  fs::last_write_time(directory.file("kept"), old);
  const DiskFiles files(directory.path(), nobody);
  EXPECT_FALSE(fs::exists(directory.file(".orlan-new-old")));
  EXPECT_TRUE(fs::exists(directory.file(".orlan-new-young")));
  EXPECT_TRUE(fs::exists(directory.file("kept")));
}

TEST(DiskFilesTest, TheDisksLimitsAreErrors) {
  EXPECT_EQ(disk::append("/dev/full", "x").error(), std::errc::no_space_on_device);
  EXPECT_EQ(disk::read("/dev/zero", 100'000).error(), std::errc::file_too_large);
}

}  // namespace
}  // namespace orlan::linuxphone
