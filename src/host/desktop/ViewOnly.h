#pragma once

#include <QObject>

namespace host {

/// For a session in which nothing can be written: the button that accepts a dialog of the component is handed to
/// BloquearControles when the dialog appears, also where the dialog takes no lock or adds a record. Such a dialog is a
/// QDialog of its class's name ("frm..."); the button is its default one.
class ViewOnly : public QObject {
  Q_OBJECT

 public:
  /// Watches the whole application while it lives. `services` is a `KelAPI.cPrincipal` and outlives it.
  explicit ViewOnly(QObject& services);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QObject& m_services;
};

}  // namespace host
