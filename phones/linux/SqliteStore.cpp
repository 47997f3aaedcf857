#include "phones/linux/SqliteStore.hpp"

#include <fcntl.h>

#include <cstdio>
#include <limits>
#include <utility>

#include "phones/common/storageRules.hpp"
#include "phones/linux/FileDescriptor.hpp"
#include "phones/linux/Sqlite.hpp"

namespace orlan::linuxphone {
namespace {

// The type stands beside the value because SQLite cannot tell true from 1, nor keep a not-a-number.
constexpr const char* schema =
    "CREATE TABLE IF NOT EXISTS entries("
    "key TEXT PRIMARY KEY NOT NULL, type TEXT NOT NULL, value BLOB) WITHOUT ROWID";

void bindValue(Statement& statement, int typeIndex, int valueIndex, const json::Value& value) {
  const char* type = "";
  if (const bool* boolean = value.boolean()) {
    type = "boolean";
    sqlite3_bind_int(statement.get(), valueIndex, *boolean ? 1 : 0);
  } else if (const std::int64_t* integer = value.integer()) {
    type = "integer";
    sqlite3_bind_int64(statement.get(), valueIndex, *integer);
  } else if (const double* real = value.real()) {
    type = "real";
    sqlite3_bind_double(statement.get(), valueIndex, *real);  // a not-a-number becomes NULL
  } else if (const std::string* text = value.string()) {
    type = "string";
    statement.bindText(valueIndex, *text);
  } else if (const Bytes* bytes = value.bytes()) {
    type = "bytes";
    statement.bindBytes(valueIndex, bytes->data);
  }
  statement.bindText(typeIndex, type);
}

/// Nothing for a type that a later version may have written.
std::optional<json::Value> readValue(const Statement& row, int typeColumn, int valueColumn) {
  const std::string type = row.bytes(typeColumn);
  if (type == "boolean") return json::Value(sqlite3_column_int(row.get(), valueColumn) != 0);
  if (type == "integer") {
    return json::Value(static_cast<std::int64_t>(sqlite3_column_int64(row.get(), valueColumn)));
  }
  if (type == "real") {
    const bool isNumber = sqlite3_column_type(row.get(), valueColumn) != SQLITE_NULL;
    return json::Value(isNumber ? sqlite3_column_double(row.get(), valueColumn)
                                : std::numeric_limits<double>::quiet_NaN());
  }
  if (type == "string") return json::Value(row.bytes(valueColumn));
  if (type == "bytes") return json::Value(Bytes{row.bytes(valueColumn)});
  return std::nullopt;
}

bool isDamage(int code) {
  return code == SQLITE_CORRUPT || code == SQLITE_NOTADB || code == SQLITE_ERROR;
}

/// SQLite gives its helper files the mode of the main one.
void createPrivately(const std::string& path) {
  const FileDescriptor created(::open(path.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600));
}

void moveAside(const std::string& path) {
  std::rename(path.c_str(), (path + ".damaged").c_str());
  std::rename((path + "-wal").c_str(), (path + ".damaged-wal").c_str());
  std::remove((path + "-shm").c_str());
}

}  // namespace

class SqliteStore::File {
 public:
  using Values = std::map<std::string, json::Value, std::less<>>;

  /// Opens or begins the file and reads it. SQLite's result code; on anything but SQLITE_OK start over.
  int open(const std::string& path, Values& values) {
    createPrivately(path);
    int code = database_.open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX);
    if (code != SQLITE_OK) return code;
    sqlite3_busy_timeout(database_.get(), 2000);
    for (const char* sql : {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL", schema}) {
      if (code = database_.run(sql); code != SQLITE_OK) return code;
    }
    if (code = check(); code != SQLITE_OK) return code;
    if (code = read(values); code != SQLITE_OK) return code;
    if (sqlite3_db_readonly(database_.get(), "main") != 0) return SQLITE_READONLY;
    write_ = Statement(database_, "INSERT OR REPLACE INTO entries(key, type, value) VALUES(?1, ?2, ?3)");
    remove_ = Statement(database_, "DELETE FROM entries WHERE key = ?1");
    return write_ && remove_ ? SQLITE_OK : SQLITE_ERROR;
  }

  bool write(std::string_view key, const json::Value& value) {
    write_.bindText(1, key);
    bindValue(write_, 2, 3, value);
    return write_.runOnce();
  }

  bool remove(std::string_view key) {
    remove_.bindText(1, key);
    return remove_.runOnce();
  }

 private:
  int check() {
    Statement statement(database_, "PRAGMA quick_check(1)");
    if (!statement) return sqlite3_errcode(database_.get());
    const int code = statement.step();
    if (code != SQLITE_ROW) return code;
    return statement.bytes(0) == "ok" ? SQLITE_OK : SQLITE_CORRUPT;
  }

  int read(Values& values) {
    Statement rows(database_, "SELECT key, type, value FROM entries");
    if (!rows) return sqlite3_errcode(database_.get());
    int code = SQLITE_ROW;
    while ((code = rows.step()) == SQLITE_ROW) {
      if (auto value = readValue(rows, 1, 2)) values.insert_or_assign(rows.bytes(0), std::move(*value));
    }
    return code == SQLITE_DONE ? SQLITE_OK : code;
  }

  Database database_;
  Statement write_;
  Statement remove_;
};

SqliteStore::SqliteStore(const std::string& path, phone::PhoneObserver& observer, const Trouble& trouble)
    : observer_(observer) {
  auto tell = [&](const std::string& what) {
    if (trouble) trouble(path + ": " + what);
  };
  auto tryOpen = [&] {
    values_.clear();
    file_ = std::make_unique<File>();
    return file_->open(path, values_);
  };
  int code = tryOpen();
  if (isDamage(code)) {
    file_.reset();
    moveAside(path);
    tell("the store was damaged; it was moved aside and a new one begun");
    code = tryOpen();
  }
  if (code != SQLITE_OK) {
    file_.reset();  // what could be read of it stays readable
    tell(std::string("the store is kept in memory only: ") + sqlite3_errstr(code));
  }
}

SqliteStore::~SqliteStore() = default;

std::optional<json::Value> SqliteStore::get(std::string_view key) const {
  const std::lock_guard lock(mutex_);
  const auto found = values_.find(key);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void SqliteStore::set(std::string_view key, json::Value value) {
  if (!phone::isStorable(value)) return;
  {
    const std::lock_guard lock(mutex_);
    if (file_ && !file_->write(key, value)) return;
    values_.insert_or_assign(std::string(key), value);
  }
  observer_.storeWritten(key, value);
}

void SqliteStore::remove(std::string_view key) {
  {
    const std::lock_guard lock(mutex_);
    const auto found = values_.find(key);
    if (found == values_.end()) return;
    if (file_ && !file_->remove(key)) return;
    values_.erase(found);
  }
  observer_.storeRemoved(key);
}

json::Object SqliteStore::contents() const {
  const std::lock_guard lock(mutex_);
  json::Object all;
  for (const auto& [key, value] : values_) all.set(key, value);
  return all;
}

}  // namespace orlan::linuxphone
