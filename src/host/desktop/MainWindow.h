#pragma once

#include "host/access/AccessDesk.h"
#include "host/desktop/HomePage.h"
#include "host/desktop/MailingOpener.h"
#include "host/desktop/NextStart.h"
#include "host/desktop/RecordPage.h"
#include "host/desktop/TreeCounts.h"
#include "host/records/ComponentBridge.h"
#include "host/records/DatabaseThread.h"
#include "host/records/NodeCatalog.h"
#include "host/services/Rescue.h"

#include <QMainWindow>
#include <QString>

#include <memory>
#include <vector>

class QLabel;

namespace Ui {
class MainWindow;
}

namespace host {

/// What the window says of the session.
struct WindowTexts {
  QString title;               ///< Of the window and of its message boxes.
  QString user;                ///< The signed-in user's name.
  QString database;            ///< The database, as the user knows it.
  QString usualFile = {};      ///< Where a new database goes unless the user says otherwise.
  QString helpFile;            ///< Opened by F1; empty for none.
  bool readOnly = false;       ///< Records can be looked at, nothing can be changed.
  bool demonstration = false;  ///< The data are invented.
  bool onServer = false;
};

/// The host's window: menus, the tree of the nodes, strips, the status line, and the page of the chosen node.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// Borrows the bridge, which must outlive the window. `connectionString` is of the bridge's database.
  MainWindow(ComponentBridge& bridge, const QString& connectionString, WindowTexts texts, QWidget* parent = nullptr);
  /// Remembers how the window looked.
  ~MainWindow() override;

  /// Shows the records of a node, or the start page for homeNode; a number that the tree does not have changes nothing.
  void ChooseNode(int nodeId);
  /// Offers what the object keeps, now and later. It outlives the window.
  void Offer(Rescue& rescue);
  /// Offers users and passwords. It outlives the window.
  void Offer(AccessDesk& desk);
  /// False while the list is being read.
  bool IsListRead() const;

 Q_SIGNALS:
  /// The page of the menus' keys is to be shown, in HTML.
  void ShortcutsWanted(const QString& page);
  /// The window has closed; the program is to go on with that.
  void NextStartWanted(const host::NextStart& next);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void SetUpHome();
  void SetUpPage(const QString& connectionString);
  void SetUpActions();
  void SetUpStatusBar();
  void SetUpStrips();
  /// What is not as usual stands in the title and in a strip that stays.
  void TellState(const QString& subject, const QString& text, const QString& inTitle);
  /// Says in the status line what was done, for a while; an empty text takes away what is there.
  void Announce(const QString& news);
  void UpdateStatus();
  /// The session's user has another name, or may do less.
  void ShowUser();
  /// Only what the session's user may use of it.
  void OfferAdministration();
  HomePage::Texts TextsForHome() const;
  void ShowNode(const Node& node);
  void ShowHome();
  void ShowLocks();
  void ShowCopies();
  void ChooseDatabase();
  /// Closes the window, unless something in it has to be finished, and goes on with that.
  void Leave(const NextStart& next);
  void CalibratePrinter();
  MailingContext ContextForMailing(const QString& connectionString);

  ComponentBridge& m_bridge;
  const std::vector<Node> m_nodes;
  const QString m_connectionString;
  WindowTexts m_texts;
  std::unique_ptr<Ui::MainWindow> m_ui;
  MailingOpener m_mailing;
  DatabaseThread m_thread;
  TreeCounts m_counts;
  QLabel* m_user;
  QLabel* m_selection;
  QLabel* m_freshness;
  HomePage* m_home = nullptr;
  std::unique_ptr<RecordPage> m_page;  // its actions and nodes are the window's
};

}  // namespace host
