#include "host/cli/FirstWindow.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QWidget>

#include <chrono>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int longestWait = 1000;  // milliseconds

// In the user's folder of the session, which nobody else may enter.
QString SocketName(const QString& what) {
  const QByteArray hash = QCryptographicHash::hash(what.toUtf8(), QCryptographicHash::Sha256).toHex().left(32);
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + u"/kel-host-"_s +
         QString::fromLatin1(hash);
}

}  // namespace

FirstWindow::FirstWindow(const QString& what) {
  m_server.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&m_server, &QLocalServer::newConnection, this, &FirstWindow::Answer);
  // What a killed program left.
  QLocalServer::removeServer(SocketName(what));
  m_server.listen(SocketName(what));
}

void FirstWindow::Answer() {
  while (QLocalSocket* caller = m_server.nextPendingConnection()) {
    connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
    caller->write("1");
    caller->flush();
    caller->disconnectFromServer();
    Q_EMIT Wanted();
  }
}

bool FirstWindow::Show(const QString& what) {
  QLocalSocket socket;
  socket.connectToServer(SocketName(what));
  return socket.waitForConnected(longestWait) && socket.waitForReadyRead(longestWait);
}

void ShowWindows() {
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) {
    if (window->isVisible() && window->parentWidget() == nullptr && window->windowType() == Qt::Window) {
      window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
      window->raise();
      window->activateWindow();
    }
  }
  if (QWidget* box = QApplication::activeModalWidget()) {
    box->raise();
    box->activateWindow();
  }
}

}  // namespace host
