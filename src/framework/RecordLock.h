#pragma once

#include "framework/HostServices.h"

#include <optional>

namespace framework {

/// The host's lock of the record that a dialog shows. Not released by its end: by then the host may be gone.
class RecordLock {
 public:
  /// The names under which the host keeps it.
  RecordLock(const QString& form, const QString& keyColumn) : m_form(form), m_keyColumn(keyColumn) {}

  /// Asks the host for the lock of the record `id`. False when another user holds it.
  bool Take(const HostServices& services, qint32 id);
  /// Releases what was taken, if anything was, whatever record is selected by now.
  void Release();

 private:
  QString m_form;
  QString m_keyColumn;
  std::optional<qint32> m_held;
};

}  // namespace framework
