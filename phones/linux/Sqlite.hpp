#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>

namespace orlan::linuxphone {

/// The few things we want of SQLite, with its handles owned. One thread at a time.
class Database {
 public:
  Database() = default;
  Database(Database&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Database& operator=(Database&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Database() { sqlite3_close_v2(handle_); }

  /// SQLite's result code. `flags` as for sqlite3_open_v2.
  int open(const std::string& path, int flags) {
    Database fresh;
    const int code = sqlite3_open_v2(path.c_str(), &fresh.handle_, flags, nullptr);
    if (code == SQLITE_OK) std::swap(handle_, fresh.handle_);
    return code;
  }
  int run(const char* sql) { return sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr); }

  explicit operator bool() const { return handle_ != nullptr; }
  [[nodiscard]] sqlite3* get() const { return handle_; }

 private:
  sqlite3* handle_ = nullptr;
};

/// A prepared statement; ends before its database.
class Statement {
 public:
  Statement() = default;
  Statement(Database& database, std::string_view sql) {
    sqlite3_prepare_v2(database.get(), sql.data(), static_cast<int>(sql.size()), &handle_, nullptr);
  }
  Statement(Statement&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Statement& operator=(Statement&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Statement() { sqlite3_finalize(handle_); }

  explicit operator bool() const { return handle_ != nullptr; }
  [[nodiscard]] sqlite3_stmt* get() const { return handle_; }

  void bindText(int index, std::string_view text) {
    sqlite3_bind_text64(handle_, index, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  void bindBytes(int index, std::string_view bytes) {
    sqlite3_bind_blob64(handle_, index, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
  }
  [[nodiscard]] std::string bytes(int column) const {
    const void* data = sqlite3_column_blob(handle_, column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(handle_, column));
    return data == nullptr ? std::string() : std::string(static_cast<const char*>(data), size);
  }

  int step() { return sqlite3_step(handle_); }

  /// Steps to the end of a statement without rows and makes it ready for the next time.
  bool runOnce() {
    const int code = step();
    sqlite3_reset(handle_);
    sqlite3_clear_bindings(handle_);
    return code == SQLITE_DONE;
  }

 private:
  sqlite3_stmt* handle_ = nullptr;
};

}  // namespace orlan::linuxphone
