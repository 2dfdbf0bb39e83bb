#pragma once

#include "host/records/HeldRecords.h"

#include <QDialog>
#include <QList>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace host {

/// The locks of the database, for an administrator: who holds which record since when, and a button that releases one.
class LocksDialog : public QDialog {
  Q_OBJECT

 public:
  /// Borrows the session.
  explicit LocksDialog(Session& session, QWidget* parent = nullptr);

  /// Reads the list anew; an error is shown, and the list stays.
  void Read();

 private:
  void Release();

  Session& m_session;
  QList<HeldRecord> m_records;
  QLabel* m_none;  ///< Says so where no record is held.
  QTreeWidget* m_list;
  QPushButton* m_release;
};

}  // namespace host
