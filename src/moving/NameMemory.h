#pragma once

#include "moving/NameMatch.h"

#include <QSettings>

namespace moving {

/// What was said of tables whose names did not match, kept in a person's settings, group "Correspondencias", by the
/// folded names of a table's columns: the next file of the same program needs no word.
class NameMemory {
 public:
  /// Borrows the settings.
  explicit NameMemory(QSettings& settings) : m_settings(&settings) {}

  /// Adds what was said of such a table to `wishes`; whether there was anything. Names
  /// that are none here count as never said.
  bool Recall(const SourceTable& table, NameWishes& wishes) const;
  /// Nothing where the wishes say nothing of the table.
  void Keep(const SourceTable& table, const NameWishes& wishes);

 private:
  QSettings* m_settings;
};

}  // namespace moving
