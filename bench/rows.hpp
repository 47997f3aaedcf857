#pragma once

#include "bench/Table.hpp"

/// One function a kind of work; each adds its rows.
namespace orlan::bench {

void memory(Table& table);
void day(Table& table);
void turns(Table& table);
void response(Table& table);
void events(Table& table);
void fix(Table& table);
void logLine(Table& table);
void selection(Table& table);
void containment(Table& table);
void librarySize(Table& table);

}  // namespace orlan::bench
