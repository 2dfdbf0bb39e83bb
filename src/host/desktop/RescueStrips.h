#pragma once

#include "host/desktop/Strip.h"
#include "host/records/ComponentBridge.h"
#include "host/services/Rescue.h"

#include <QObject>

namespace host {

/// Offers what was kept of closed dialogs: one strip, of the newest of them, until it is opened again or given up.
class RescueStrips : public QObject {
  Q_OBJECT

 public:
  /// Borrows both.
  RescueStrips(Rescue& rescue, ComponentBridge& bridge, QObject* parent);

  /// Tells what there is to offer already.
  void Tell();

 Q_SIGNALS:
  void Told(const host::StripText& content);
  /// The strip of that subject is not wanted any more.
  void Withdrawn(const QString& subject);
  /// The dialog is to be opened; the input is put into it.
  void DialogWanted(const host::ComponentRequest& request);

 private:
  void TellOf(const KeptInput& input);
  void TellOfRest(const KeptInput& input, const QList<ControlValue>& values);
  void OpenAgain(const KeptInput& input);
  /// Who changed the record since, as a sentence; empty for nobody.
  QString ChangedSince(const KeptInput& input) const;

  Rescue& m_rescue;
  ComponentBridge& m_bridge;
  QString m_toldChange;
};

}  // namespace host
