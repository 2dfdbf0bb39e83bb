#pragma once

#include "host/records/ComponentBridge.h"

#include <QObject>

namespace host {

/// For a session in which nothing can be written, and for requests that are for viewing only: the button that accepts a
/// dialog of the component is handed to BloquearControles when the dialog appears, also where the dialog takes no lock
/// or adds a record. Such a dialog is every one that appears while the bridge has such a request open, nested ones too,
/// but for the boxes that Qt makes (questions, printers, files): what they accept is no record. The button is the
/// dialog's default one.
class ViewOnly : public QObject {
  Q_OBJECT

 public:
  /// Watches the whole application while it lives. `services` is a `KelAPI.cPrincipal`; both outlive it.
  ViewOnly(QObject& services, const ComponentBridge& bridge);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsWanted() const;

  QObject& m_services;
  const ComponentBridge& m_bridge;
};

}  // namespace host
