#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

namespace host {

/// The window of a user on a database hears of a second start of the same in the same session, which then shows it and
/// ends. Two starts at the same moment may both open one.
class FirstWindow : public QObject {
  Q_OBJECT

 public:
  /// `what`: the database and the user. Listens; where that can't be, nothing is heard.
  explicit FirstWindow(const QString& what);

  /// Asks the program that has it open to show its window. False where none answers within a second.
  static bool Show(const QString& what);

 Q_SIGNALS:
  void Wanted();

 private:
  void Answer();

  QLocalServer m_server;
};

/// Brings the program's windows to the front, the box that is open before all.
void ShowWindows();

}  // namespace host
