#pragma once

#include "host/records/Session.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QVariant>

namespace host {

/// What the component is asked to show or delete.
struct ComponentRequest {
  int node = 0;
  int action = 0;
  int selectedId = 0;
  QVariant aux = 0;
  QString path = {};      ///< The node's place in the tree, "Tablas\Países".
  bool viewOnly = false;  ///< The dialog can only be looked at; see ViewOnly.
};

/// Makes requests of the configuration component, which is created by name for each of them: fills the services
/// object, calls, and gives the host its connection back open, whatever happened.
class ComponentBridge : public QObject {
  Q_OBJECT

 public:
  /// Borrows both for its life; `services` is the object that the component calls back.
  ComponentBridge(QObject& services, Session& session, QObject* parent = nullptr);

  host::Session& Session() const { return m_session; }

  /// Raises 429 with what to do when the component cannot be created.
  static void CheckComponent();

  /// Shows the dialog of the request and returns when it is closed; one that was only looked at is shown again when its
  /// record became free and the user wants to change it now. Raises 429 with what to do when the component
  /// cannot be created; the errors of the dialog leave it.
  void ShowDialog(const ComponentRequest& request);
  /// Deletes the request's record if nothing refers to it; the component itself tells the user of a refusal.
  void DeleteRecord(const ComponentRequest& request);

  /// The connection, opened when it is closed. The errors of opening leave it.
  adodb::Connection& OpenConnection();

  /// Releases this session's lock of a record, if it holds it; where that fails now, before the next one is taken.
  void ReleaseLock(const QString& keyColumn, int key);

  /// The request whose dialog is being shown, the innermost of several; nullptr for none.
  const ComponentRequest* OpenRequest() const { return m_open; }
  /// True while the component is being called.
  bool IsBusy() const { return m_calls > 0; }
  /// The program is ending: no further call begins.
  void End() { m_ending = true; }
  /// The end was called off.
  void GoOn() { m_ending = false; }
  bool IsEnding() const { return m_ending; }

 private:
  void Call(QByteArrayView method, const ComponentRequest& request);
  void Fill(const ComponentRequest& request);
  void RecoverConnection();

  QObject& m_services;
  host::Session& m_session;
  const ComponentRequest* m_open = nullptr;
  int m_calls = 0;
  bool m_ending = false;
};

}  // namespace host
