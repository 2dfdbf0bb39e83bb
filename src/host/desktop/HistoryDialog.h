#pragma once

#include "host/records/ChangeLog.h"

#include <QDialog>

namespace host {

/// What was done to a record, the newest first: when, by whom, where, and each column before and after.
class HistoryDialog : public QDialog {
  Q_OBJECT

 public:
  /// `name` is how the list calls the record.
  HistoryDialog(const QString& name, const QList<Change>& changes, QWidget* parent = nullptr);
};

}  // namespace host
