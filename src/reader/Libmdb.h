#pragma once

// libmdb includes this inside a block for C, which it can't stand there.
#include <glib.h>

#include <mdbtools.h>

#include <memory>

namespace reader {

struct TableDefEnd {
  void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using TableDef = std::unique_ptr<MdbTableDef, TableDefEnd>;

}  // namespace reader
