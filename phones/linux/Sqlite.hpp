#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>

#include "phones/linux/Releasing.hpp"

namespace orlan::linuxphone {

/// The few things we want of SQLite, with its handles owned. One thread at a time.
class Database {
 public:
  /// SQLite's result code. `flags` as for sqlite3_open_v2.
  int open(const std::string& path, int flags) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
    handle_.reset(opened);  // also of an attempt that failed
    return code;
  }
  int run(const char* sql) { return sqlite3_exec(get(), sql, nullptr, nullptr, nullptr); }

  [[nodiscard]] sqlite3* get() const { return handle_.get(); }

 private:
  std::unique_ptr<sqlite3, Releasing<sqlite3_close_v2>> handle_;
};

/// A prepared statement; ends before its database.
class Statement {
 public:
  Statement() = default;
  Statement(Database& database, std::string_view sql) {
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v2(database.get(), sql.data(), static_cast<int>(sql.size()), &prepared, nullptr);
    handle_.reset(prepared);
  }

  explicit operator bool() const { return handle_ != nullptr; }
  [[nodiscard]] sqlite3_stmt* get() const { return handle_.get(); }

  void bindText(int index, std::string_view text) {
    sqlite3_bind_text64(get(), index, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  void bindBytes(int index, std::string_view bytes) {
    sqlite3_bind_blob64(get(), index, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
  }
  [[nodiscard]] std::string bytes(int column) const {
    const void* data = sqlite3_column_blob(get(), column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(get(), column));
    return data == nullptr ? std::string() : std::string(static_cast<const char*>(data), size);
  }

  int step() { return sqlite3_step(get()); }

  /// Steps to the end of a statement without rows and makes it ready for the next time.
  bool runOnce() {
    const int code = step();
    sqlite3_reset(get());
    sqlite3_clear_bindings(get());
    return code == SQLITE_DONE;
  }

 private:
  std::unique_ptr<sqlite3_stmt, Releasing<sqlite3_finalize>> handle_;
};

}  // namespace orlan::linuxphone
