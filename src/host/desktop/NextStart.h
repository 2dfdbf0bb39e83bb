#pragma once

#include <QString>

namespace host {

/// How the program goes on when this session has ended.
struct NextStart {
  QString connectionString = {};  ///< The database that is opened.
  QString copy = {};              ///< A copy that takes its place before; empty for none.
  bool create = false;            ///< A file that is not there is made.
  bool demonstration = false;     ///< The file of invented data; `connectionString` is empty.
};

}  // namespace host
