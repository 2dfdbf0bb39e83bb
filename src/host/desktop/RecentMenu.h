#pragma once

#include <QMenu>

namespace host {

/// «Abrir reciente»: the last databases but the one in the window, read when the menu opens. Those that are gone are
/// counted once in its last line, and forgotten.
class RecentMenu : public QMenu {
  Q_OBJECT

 public:
  /// `current`: the connection string of the window's database.
  explicit RecentMenu(QString current, QWidget* parent = nullptr);

 Q_SIGNALS:
  void DatabaseWanted(const QString& connectionString);

 private:
  void Fill();

  QString m_current;
};

}  // namespace host
