#pragma once

#include "moving/Answers.h"
#include "moving/Convert.h"
#include "moving/NameMemory.h"
#include "moving/ReadFile.h"

#include <functional>

namespace moving {

/// What an import is doing, in this order.
enum class ImportStep { Reading, Comparing, Writing };

/// How a file is to come in.
struct ImportWishes {
  ReadWishes read = {};
  NameWishes names = {};
  const NameMemory* memory = nullptr;  ///< What was said of such tables before; `names` goes before it.
  Answers answers = {};
  bool isTrial = false;        ///< Everything but writing.
  bool acceptsLosses = false;  ///< What can't come in is left out; otherwise nothing is written then.
  bool skipsDeleted = false;   ///< Rows that are marked as deleted and that nothing refers to stay out.
  QString seen = {};           ///< ImportReport::seal of the trial that was looked at; empty where there was none.
  /// A tax identifier in its one form, empty for an invalid one: people with the same one are the same.
  std::function<QString(const QString&)> identifier = {};
  /// What there is to say of a row that comes in all the same, by its values; sentences without their points.
  std::function<QStringList(const database::Table&, const QList<Value>&)> inspect = {};
  /// Told now and then how many rows are done; `total` is 0 while nobody knows how many there are.
  std::function<void(ImportStep step, qint64 done, qint64 total)> progress = {};
  database::Stop stop = {};
};

}  // namespace moving
