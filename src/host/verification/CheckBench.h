#pragma once

#include "platform/adodb/Connection.h"

#include <QComboBox>
#include <QLineEdit>
#include <QObjectList>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

/// The checks of a host's services: each calls one member as the component does.
namespace host {

/// A key that no record has: what is locked or looked up in a host's own database is nobody's.
inline constexpr int NobodysKey = 2147483647;

/// What a member did wrong, as a text for the host's author. Thrown by a check.
struct Fault {
  QString text;
};

/// One member and its check, which throws Fault or automation::Error.
struct MemberCheck {
  QString member;
  std::function<void()> run;
};

/// What the checks hand to the members: controls as a dialog has them, and a database of reference data of their own in
/// a temporary folder. Modal windows that a member opens are closed while a bench exists.
class CheckBench {
 public:
  CheckBench();

  QWidget window;
  QWidget otherWindow;  ///< The button's: a host may do more to the dialog of a control that it disables.
  QLineEdit* box;
  QComboBox* combo;
  QTableWidget* grid;  ///< Two columns, three rows.
  QPushButton* button;
  QObjectList Controls() const { return {box, combo, grid}; }
  /// Open.
  adodb::Connection& Connection() { return *m_connection; }
  /// How many windows members have opened so far; closes those that are still there.
  int WindowsShown();
  /// What the last of them said, folded or not.
  const QString& TextsShown() const { return m_textsShown; }

 private:
  void CloseWindows();

  QTemporaryDir m_folder;
  std::unique_ptr<adodb::Connection> m_connection;
  QTimer m_closer;
  int m_windowsShown = 0;
  QString m_textsShown;
};

/// Throws Fault with `text` unless `holds`.
void Require(bool holds, const QString& text);
/// The value, which must be of the kind; the fault says what was answered instead. The component would convert some of
/// the others, but not each of them.
int Number(const QVariant& answer);
bool Boolean(const QVariant& answer);
QString String(const QVariant& answer);

/// The parameter of that position, from 0, must be one by reference: what the member writes is lost otherwise.
void RequireReference(const QObject& object, const char* method, int parameters, int position);

/// The checks of a services object (`cPrincipal`), with a second object of its class, and of a list helper (`cListas`),
/// on the connection of its own services, null where that is not known, inside transactions that are rolled back. Both
/// refer to their arguments.
std::vector<MemberCheck> ServiceChecks(QObject& services, QObject& second, CheckBench& bench);
std::vector<MemberCheck> ListChecks(QObject& lists, adodb::Connection* own, CheckBench& bench);

/// What is wrong with the member; empty when nothing is.
QString FaultOf(const MemberCheck& check);

}  // namespace host
