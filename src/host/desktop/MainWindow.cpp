#include "host/desktop/MainWindow.h"

#include "database/Database.h"
#include "database/Place.h"
#include "host/calibration/CalibrationDialog.h"
#include "host/desktop/CopiesDialog.h"
#include "host/desktop/DatabaseDialog.h"
#include "host/desktop/HelpMenu.h"
#include "host/desktop/LocksDialog.h"
#include "host/desktop/MovingOpener.h"
#include "host/desktop/Preferences.h"
#include "host/desktop/RecentMenu.h"
#include "host/desktop/RescueStrips.h"
#include "host/desktop/WindowMemory.h"
#include "host/help/HelpDesk.h"
#include "host/help/ShortcutsPage.h"
#include "host/services/ErrorBox.h"
#include "platform/automation/Error.h"
#include "platform/text/AsItStands.h"
#include "platform/text/FoldForSearch.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QSettings>
#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// In characters; a longer one would not let the window become narrow.
constexpr qsizetype longestShownPath = 60;
// In milliseconds; what a person does next takes the news away, too.
constexpr int newsTime = 8000;

QString EndOf(const QString& text, qsizetype length) {
  return text.size() > length ? QChar(0x2026) + text.right(length) : text;
}

QString SessionText(const WindowTexts& texts, const Session& session) {
  const QString user = texts.onServer ? u"%1 (%2)"_s.arg(texts.user, RightsText(session.UserRights())) : texts.user;
  return u"Usuario: %1   ·   Base de datos: %2"_s.arg(user, EndOf(texts.database, longestShownPath));
}

// The manual has a page for each group, named after it, with an anchor for each table.
QString HelpTopic(const Node& node) {
  return texts::FoldForSearch(node.group).replace(u' ', u'-') + u'#' + node.table;
}

}  // namespace

MainWindow::MainWindow(ComponentBridge& bridge, const QString& connectionString, WindowTexts texts, QWidget* parent)
    : QMainWindow(parent),
      m_bridge(bridge),
      m_nodes(NodesFor(bridge.Session().IsAdministrator())),
      m_connectionString(connectionString),
      m_texts(std::move(texts)),
      m_ui(std::make_unique<Ui::MainWindow>()),
      m_mailing([this, connectionString] { return ContextForMailing(connectionString); }),
      m_thread([connectionString] { return database::CreateConnection(connectionString); }),
      m_counts(m_thread, m_nodes),
      m_user(new QLabel(this)),
      m_selection(new QLabel(this)),
      m_freshness(new QLabel(this)) {
  m_selection->setObjectName(u"lblSelection"_s);
  m_freshness->setObjectName(u"lblFreshness"_s);
  m_ui->setupUi(this);
  m_ui->nodeTree->SetNodes(m_nodes);
  SetUpStrips();
  setWindowTitle(m_texts.title);
  SetUpPage(connectionString);
  SetUpHome();
  SetUpActions();
  SetUpStatusBar();
  LoadWindow(*this, *m_ui->splitter);
  connect(m_ui->actImport, &QAction::triggered, this, [this, connectionString] {
    if (BringFileIn(m_bridge.Session(), connectionString, this)) {
      m_ui->actRefresh->trigger();
    }
  });
  OfferAdministration();
  connect(&m_counts, &TreeCounts::Counted, m_ui->nodeTree, &NodeTree::SetCounts);
  connect(m_page.get(), &RecordPage::Noticed, &m_counts, &TreeCounts::Follow);
  connect(m_ui->actRefresh, &QAction::triggered, &m_counts, &TreeCounts::CountAll);
  // Behind the first list.
  QTimer::singleShot(0, &m_counts, &TreeCounts::CountAll);
  connect(m_ui->nodeTree, &NodeTree::NodeChosen, this, &MainWindow::ShowNode);
  connect(m_ui->nodeTree, &NodeTree::HomeChosen, this, &MainWindow::ShowHome);
  connect(m_ui->nodeTree, &NodeTree::ListWanted, this, [this] { m_ui->pages->currentWidget()->setFocus(); });
}

MainWindow::~MainWindow() {
  SaveWindow(*this, *m_ui->splitter);
  SaveLastNode(m_page->Shown() == nullptr ? homeNode : m_page->Shown()->id);
}

void MainWindow::ChooseNode(int nodeId) {
  m_ui->nodeTree->Choose(nodeId);
}

bool MainWindow::IsListRead() const {
  return m_page->IsListRead();
}

void MainWindow::Offer(Rescue& rescue) {
  auto* offers = new RescueStrips(rescue, m_bridge, this);
  connect(offers, &RescueStrips::Told, m_ui->strips, &Strips::Tell);
  connect(offers, &RescueStrips::Withdrawn, m_ui->strips, &Strips::Withdraw);
  connect(offers, &RescueStrips::DialogWanted, m_page.get(), &RecordPage::OpenAgain);
  offers->Tell();
}

void MainWindow::Offer(AccessDesk& desk) {
  const auto showWhatIsOffered = [this, &desk] {
    m_ui->actUsers->setVisible(desk.MaySeeUsers());
    for (QAction* action : {m_ui->actOwnPassword, m_ui->actLock, m_ui->actOtherUser}) {
      action->setVisible(desk.AsksForPasswords());
    }
  };
  connect(&desk, &AccessDesk::Changed, this, showWhatIsOffered);
  connect(&desk, &AccessDesk::Reduced, this, [this](const QString& text) {
    TellState(u"stripReadOnly"_s, text, u"solo lectura"_s);
    ShowUser();
    m_page->Refresh();
  });
  connect(m_ui->actUsers, &QAction::triggered, this, [this, &desk] {
    desk.ShowUsers(this);
    ShowUser();
    m_page->Refresh();
  });
  connect(m_ui->actOwnPassword, &QAction::triggered, this, [this, &desk] { desk.ChangeOwnPassword(this); });
  connect(m_ui->actPreferences, &QAction::triggered, &desk, &AccessDesk::ReadSettings);
  connect(m_ui->actLock, &QAction::triggered, &desk, &AccessDesk::Lock);
  connect(m_ui->actOtherUser, &QAction::triggered, this, [this, &desk] {
    desk.WantOtherUser(true);
    desk.WantOtherUser(close());
  });
  showWhatIsOffered();
}

void MainWindow::SetUpPage(const QString& connectionString) {
  const RecordActions actions{.add = m_ui->actAdd,
                              .modify = m_ui->actModify,
                              .remove = m_ui->actDelete,
                              .undoDelete = m_ui->actUndoDelete,
                              .recover = m_ui->actRecover,
                              .newBranch = m_ui->actNewBranch,
                              .history = m_ui->actHistory,
                              .writeToPeople = m_ui->actWriteToPeople,
                              .copy = m_ui->actCopy,
                              .copyWithHeadings = m_ui->actCopyWithHeadings,
                              .exportList = m_ui->actExport,
                              .print = m_ui->actPrint,
                              .columns = m_ui->actColumns,
                              .refresh = m_ui->actRefresh,
                              .find = m_ui->actFind,
                              .detail = m_ui->actDetail};
  m_page = std::make_unique<RecordPage>(m_bridge, m_thread, connectionString, actions, m_texts.title, m_texts.readOnly);
  m_ui->pages->addWidget(m_page.get());
  m_ui->splitter->setStretchFactor(1, 1);
  connect(m_page.get(), &RecordPage::Told, m_ui->strips, &Strips::Tell);
  connect(m_page.get(), &RecordPage::NewsChanged, this, &MainWindow::Announce);
  connect(m_page.get(), &RecordPage::StateChanged, this, &MainWindow::UpdateStatus);
  connect(m_page.get(), &RecordPage::NodeWanted, this, &MainWindow::ChooseNode);
  connect(m_ui->strips, &Strips::Left, m_page.get(), qOverload<>(&QWidget::setFocus));
}

void MainWindow::SetUpHome() {
  m_home = new HomePage(m_thread, m_nodes, TextsForHome());
  m_ui->pages->addWidget(m_home);
  // Of those on a server nothing is known here.
  if (database::PlaceOf(m_connectionString).IsFile()) {
    m_home->OfferCopies([this] { ShowCopies(); });
  }
  connect(&m_counts, &TreeCounts::Counted, m_home, &HomePage::SetCounts);
  connect(m_page.get(), &RecordPage::Noticed, m_home, &HomePage::Refresh);
  connect(m_ui->actRefresh, &QAction::triggered, m_home, &HomePage::Refresh);
  connect(m_home, &HomePage::RecordsWanted, m_page.get(), &RecordPage::ShowRecords);
  connect(m_home, &HomePage::RecoveryWanted, this,
          [this](int nodeId, int id) { m_page->RecoverRecord(*FindNode(nodeId), id); });
  connect(m_home, &HomePage::LocksWanted, this, &MainWindow::ShowLocks);
  connect(m_home, &HomePage::AdditionWanted, this, [this](int nodeId) {
    ChooseNode(nodeId);
    m_ui->actAdd->trigger();
  });
}

void MainWindow::SetUpActions() {
  connect(m_ui->actLocks, &QAction::triggered, this, &MainWindow::ShowLocks);
  for (QAction* action : {m_ui->actUsers, m_ui->actOwnPassword, m_ui->actLock, m_ui->actOtherUser}) {
    action->setVisible(false);
  }
  connect(m_ui->actCopies, &QAction::triggered, this, &MainWindow::ShowCopies);
  connect(m_ui->actDatabase, &QAction::triggered, this, &MainWindow::ChooseDatabase);
  auto* recent = new RecentMenu(m_connectionString, m_ui->mnuFile);
  m_ui->mnuFile->insertMenu(m_ui->actPreferences, recent);
  connect(recent, &RecentMenu::DatabaseWanted, this,
          [this](const QString& wanted) { Leave({.connectionString = wanted}); });
  connect(m_ui->actPreferences, &QAction::triggered, this, [this] {
    Preferences(m_bridge, !m_texts.onServer, this).exec();
    m_home->Refresh();
  });
  connect(m_ui->actMailing, &QAction::triggered, this, [this] { m_mailing.Open(nullptr, 0); });
  connect(m_ui->actWriteToPeople, &QAction::triggered, this,
          [this] { m_mailing.Open(m_page->Shown(), m_page->SelectedId()); });
  connect(m_ui->actQuit, &QAction::triggered, this, &QWidget::close);
  connect(m_ui->actHelp, &QAction::triggered, this, [this] { OpenHelp(m_texts.title, m_texts.helpFile); });
  connect(m_ui->actShortcuts, &QAction::triggered, this,
          [this] { Q_EMIT ShortcutsWanted(ShortcutsPage(*m_ui->mainMenu)); });
  connect(m_ui->actAbout, &QAction::triggered, this, [this] { ShowAbout(this, m_texts.title); });
  m_ui->actHelp->setVisible(!m_texts.helpFile.isEmpty());
  m_ui->actShortcuts->setVisible(!m_texts.helpFile.isEmpty());
}

void MainWindow::SetUpStatusBar() {
  m_user->setObjectName(u"lblSession"_s);
  m_user->setTextFormat(Qt::PlainText);
  m_user->setText(SessionText(m_texts, m_bridge.Session()));
  m_user->setToolTip(texts::AsItStands(m_texts.database));
  m_ui->statusBar->addWidget(m_selection);
  m_ui->statusBar->addPermanentWidget(m_user);
  m_freshness->setToolTip(u"Si la lista está como la base de datos"_s);
  m_ui->statusBar->addPermanentWidget(m_freshness);
}

void MainWindow::TellState(const QString& subject, const QString& text, const QString& inTitle) {
  m_ui->strips->Tell({.subject = subject, .text = text, .tone = StripTone::Attention});
  m_texts.title += u" (%1)"_s.arg(inTitle);
}

void MainWindow::SetUpStrips() {
  if (m_texts.demonstration) {
    TellState(u"stripDemonstration"_s, u"Demostración: los datos son inventados."_s, u"Demostración"_s);
  }
  if (m_texts.readOnly) {
    const QString reason = m_bridge.Session().isViewer ? u"su usuario solo puede consultar."_s
                           : m_texts.onServer
                               ? u"su usuario solo puede leer la base de datos. Pida permiso a quien la administra."_s
                               : u"el archivo de la base de datos o su carpeta no se pueden escribir."_s;
    TellState(u"stripReadOnly"_s, u"Solo lectura: %1 Los cuadros se abren sin «Aceptar»."_s.arg(reason),
              u"solo lectura"_s);
  }
  if (const QSettings settings; !settings.isWritable()) {
    m_ui->strips->Tell({.subject = u"stripSettings"_s,
                        .text = u"Columnas, tamaños y preferencias no se recordarán: no se puede escribir «%1»."_s.arg(
                            settings.fileName()),
                        .ways = {{u"&Entendido"_s}},
                        .tone = StripTone::Attention,
                        .stays = true});
  }
}

void MainWindow::Announce(const QString& news) {
  m_ui->statusBar->showMessage(news, newsTime);
}

void MainWindow::UpdateStatus() {
  m_selection->setText(m_page->SelectionText());
  m_freshness->setText(!m_page->IsListRead() ? u"○ Leyendo…"_s
                       : m_page->IsInDoubt() ? u"○ Puede haber cambios (F5)"_s
                                             : u"● Al día"_s);
}

void MainWindow::OfferAdministration() {
  const bool isAdministrator = m_bridge.Session().IsAdministrator();
  m_ui->actImport->setVisible(isAdministrator && !m_texts.readOnly);
  m_ui->actLocks->setVisible(isAdministrator);
  if (!isAdministrator) {
    m_ui->nodeTree->HideAdministration();
    // Nobody goes on looking at what is not theirs any more.
    if (m_page->Shown() != nullptr && m_page->Shown()->administratorsOnly) {
      ChooseNode(homeNode);
    }
  }
}

HomePage::Texts MainWindow::TextsForHome() const {
  const database::Place place = database::PlaceOf(m_connectionString);
  return {.user = m_texts.user,
          .database = m_texts.database,
          .databaseFile = place.IsFile() ? place.file : QString(),
          .readOnly = m_texts.readOnly,
          .administrator = m_bridge.Session().IsAdministrator()};
}

void MainWindow::ShowUser() {
  m_texts.user = m_bridge.Session().userName;
  m_texts.readOnly = m_texts.readOnly || m_bridge.Session().readOnly;
  m_user->setText(SessionText(m_texts, m_bridge.Session()));
  m_home->SetTexts(TextsForHome());
  OfferAdministration();
}

void MainWindow::ShowNode(const Node& node) {
  setWindowTitle(u"%1 – %2"_s.arg(node.title, m_texts.title));
  setProperty(HelpDesk::topicProperty, HelpTopic(node));
  m_ui->pages->setCurrentWidget(m_page.get());
  m_page->Show(node);
}

void MainWindow::ShowHome() {
  setWindowTitle(u"Inicio – %1"_s.arg(m_texts.title));
  setProperty(HelpDesk::topicProperty, u"inicio"_s);
  m_page->Leave();
  m_ui->pages->setCurrentWidget(m_home);
  UpdateStatus();
}

void MainWindow::ShowLocks() {
  LocksDialog(m_bridge.Session(), this).exec();
}

void MainWindow::ShowCopies() {
  const bool mayRestore = m_bridge.Session().IsAdministrator() && !m_texts.readOnly;
  CopiesDialog dialog(m_connectionString, m_texts.title, mayRestore, this);
  if (dialog.exec() == QDialog::Accepted) {
    Leave({.connectionString = m_connectionString, .copy = dialog.Wanted(), .demonstration = m_texts.demonstration});
  }
  m_home->Refresh();
}

void MainWindow::ChooseDatabase() {
  DatabaseDialog dialog(u"Ahora está abierta «%1»."_s.arg(m_texts.database), m_texts.usualFile, {}, this);
  if (dialog.exec() == QDialog::Accepted) {
    Leave(dialog.Chosen());
  }
}

void MainWindow::Leave(const NextStart& next) {
  if (close()) {
    Q_EMIT NextStartWanted(next);
  }
}

MailingContext MainWindow::ContextForMailing(const QString& connectionString) {
  const Session& session = m_bridge.Session();
  return {.connectionString = connectionString,
          .title = session.title,
          .userName = m_texts.user,
          .database = m_texts.database,
          .user = {.id = session.userId, .isAdministrator = session.IsAdministrator()},
          .readOnly = m_texts.readOnly,
          .demonstration = m_texts.demonstration,
          .helpFile = m_texts.helpFile,
          .openRecord = [this](int nodeId, int id) { m_page->Open(*FindNode(nodeId), id, {}); },
          .calibrate = [this] { CalibratePrinter(); }};
}

void MainWindow::CalibratePrinter() {
  try {
    CalibrationDialog(m_bridge.OpenConnection(), m_texts.user, {}, SystemPrinters(), QApplication::activeWindow())
        .exec();
  } catch (const automation::Error& error) {
    ShowError(this, m_texts.title, u"No se ha podido calibrar la impresora."_s, error);
  }
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->setAccepted(m_mailing.Close());
}

}  // namespace host
