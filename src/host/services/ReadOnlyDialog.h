#pragma once

#include "host/records/DeletedRecord.h"
#include "host/records/Session.h"

#include <QDialog>
#include <QObjectList>

class QAction;
class QLabel;

namespace host {

/// Makes a dialog whose record somebody else holds one that can only be looked at: its title says so, texts can be
/// read, selected and copied but not changed, everything else that changes something is off, and a strip at its top
/// says who has the record and tries again. What the dialog enables later by itself is disabled again. Controls,
/// actions and shortcuts with the dynamic property `SirveEnConsulta` serve as before.
///
/// It holds from the dialog's showing until the control that is blocked goes, and with it this object.
class ReadOnlyDialog : public QObject {
  Q_OBJECT

 public:
  /// `blocked` becomes the owner. The refusal that the session knows last says which record it is about.
  ReadOnlyDialog(QDialog& dialog, QObject& blocked, Session& session);

  /// Whether the controls are those of such a dialog.
  static bool Holds(const QObjectList& controls);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Apply();
  void Block(QWidget& control);
  void Disable(QWidget& control);
  void BlockAction(QAction& action);
  void AddStrip();
  /// When the record is free now, the dialog closes, and Session::openAgain has it opened anew on what the other user
  /// left.
  void TryAgain();
  /// Whoever held the record may have deleted it.
  std::optional<DeletedRecord> DeletedSince() const;

  QDialog* m_dialog;  ///< Outlives this object, which belongs to one of its controls.
  Session& m_session;
  std::optional<LockHolder> m_holder;
  QLabel* m_reason = nullptr;
  bool m_applied = false;
};

}  // namespace host
