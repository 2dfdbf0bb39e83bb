#pragma once

#include "platform/adodb/Connection.h"

#include <QObject>
#include <QString>

#include <functional>

/// Stands for the component under its own ProgID: it notes what it is asked, does what the test says, and closes the
/// connection as the component does.
class FakeComponent : public QObject {
  Q_OBJECT

 public:
  /// What a call does on the open connection; `id` is the selected record.
  using Behaviour = std::function<void(adodb::Connection& connection, int id)>;

  /// Registers the class; the behaviour holds until the next registration.
  static void Register(Behaviour behaviour);
  static void Unregister();
  /// The requests since the last registration: "PasarDatos nodo=20 accion=2 id=35 aux=0 Tablas\Países".
  static QStringList Requests();

  Q_INVOKABLE void PasarDatos(QObject* api);
  Q_INVOKABLE void EliminarRegistro(QObject* api);

 private:
  static void Serve(const QString& method, QObject* api);
};
