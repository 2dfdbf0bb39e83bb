#include "host/desktop/MainWindow.h"

#include "database/Database.h"
#include "host/calibration/CalibrationDialog.h"
#include "host/desktop/DeletionDialogs.h"
#include "host/desktop/HelpMenu.h"
#include "host/desktop/HistoryDialog.h"
#include "host/desktop/LocksDialog.h"
#include "host/desktop/Preferences.h"
#include "host/desktop/RescueStrips.h"
#include "host/desktop/WindowMemory.h"
#include "host/help/HelpDesk.h"
#include "host/help/ShortcutsPage.h"
#include "host/records/RecordReader.h"
#include "host/services/ErrorBox.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstNodo.h"
#include "platform/text/AsItStands.h"
#include "platform/text/FoldForSearch.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// In characters; a longer one would not let the window become narrow.
constexpr qsizetype longestShownPath = 60;
// In milliseconds; what a person does next takes the news away, too.
constexpr int newsTime = 8000;
constexpr int mostShownChanges = 500;

QString EndOf(const QString& text, qsizetype length) {
  return text.size() > length ? QChar(0x2026) + text.right(length) : text;
}

// The manual has a page for each group, named after it, with an anchor for each table.
QString HelpTopic(const Node& node) {
  return texts::FoldForSearch(node.group).replace(u' ', u'-') + u'#' + node.table;
}

QString CountText(int shown, int total) {
  const QString records = total == 1 ? u"registro"_s : u"registros"_s;
  return shown == total ? u"%1 %2"_s.arg(total).arg(records) : u"%1 de %2 %3"_s.arg(shown).arg(total).arg(records);
}

}  // namespace

MainWindow::MainWindow(ComponentBridge& bridge, const QString& connectionString, WindowTexts texts, QWidget* parent)
    : QMainWindow(parent),
      m_bridge(bridge),
      m_nodes(NodesFor(bridge.Session().IsAdministrator())),
      m_texts(std::move(texts)),
      m_ui(std::make_unique<Ui::MainWindow>()),
      m_loader([connectionString] { return database::CreateConnection(connectionString); }),
      m_dialogs(bridge, this),
      m_mailing([this, connectionString] { return ContextForMailing(connectionString); }) {
  m_ui->setupUi(this);
  m_live = std::make_unique<LiveRecords>(bridge, m_loader, *m_ui->recordList, connectionString);
  m_ui->nodeTree->SetNodes(m_nodes);
  m_ui->splitter->setStretchFactor(1, 1);
  SetUpStrips();
  setWindowTitle(m_texts.title);
  SetUpActions();
  SetUpStatusBar();
  LoadWindow(*this, *m_ui->splitter);
  connect(m_ui->nodeTree, &NodeTree::NodeChosen, this, &MainWindow::ShowNode);
  connect(m_ui->nodeTree, &NodeTree::ListWanted, m_ui->recordList, qOverload<>(&QWidget::setFocus));
  connect(m_ui->txtSearch, &QLineEdit::textChanged, this, &MainWindow::Search);
  connect(m_ui->txtSearch, &SearchBox::ListWanted, m_ui->recordList, qOverload<>(&QWidget::setFocus));
  connect(m_ui->recordList, &RecordList::RecordActivated, m_ui->actModify, &QAction::trigger);
  connect(m_ui->recordList, &RecordList::SelectedRecordsChanged, this, &MainWindow::UpdateState);
  connect(&m_loader, &RecordLoader::Loaded, this, &MainWindow::ShowList);
  connect(&m_loader, &RecordLoader::Failed, this, &MainWindow::ShowReadError);
  connect(m_live.get(), &LiveRecords::Updated, this, &MainWindow::UpdateState);
  connect(m_live.get(), &LiveRecords::MayHaveChanged, m_ui->statusBar,
          [this] { m_ui->statusBar->showMessage(u"Puede haber cambios (F5)"_s); });
  connect(&m_dialogs, &RecordDialogs::Told, m_ui->strips, &Strips::Tell);
  connect(&m_dialogs, &RecordDialogs::RecoveryWanted, this, [this](int note) { RecoverAndShow({note}); });
  connect(&m_dialogs, &RecordDialogs::RecordWanted, this, [this](const Node& node, int id) { Open(node, id, {}); });
  UpdateState();
}

MainWindow::~MainWindow() {
  StoreLayout();
  SaveWindow(*this, *m_ui->splitter);
}

void MainWindow::ChooseNode(int nodeId) {
  m_ui->nodeTree->Choose(nodeId);
}

void MainWindow::Offer(Rescue& rescue) {
  auto* offers = new RescueStrips(rescue, m_bridge, this);
  connect(offers, &RescueStrips::Told, m_ui->strips, &Strips::Tell);
  connect(offers, &RescueStrips::Withdrawn, m_ui->strips, &Strips::Withdraw);
  connect(offers, &RescueStrips::DialogWanted, this, [this](const ComponentRequest& request) {
    m_dialogs.OpenAgain(request);
    Refresh();
  });
  offers->Tell();
}

void MainWindow::SetUpActions() {
  connect(m_ui->actAdd, &QAction::triggered, this, &MainWindow::Add);
  connect(m_ui->actModify, &QAction::triggered, this, &MainWindow::Modify);
  connect(m_ui->actDelete, &QAction::triggered, this, &MainWindow::Delete);
  connect(m_ui->actUndoDelete, &QAction::triggered, this, &MainWindow::UndoDelete);
  connect(m_ui->actRecover, &QAction::triggered, this, &MainWindow::RecoverSelected);
  connect(m_ui->actLocks, &QAction::triggered, this, &MainWindow::ShowLocks);
  m_ui->actLocks->setVisible(m_bridge.Session().IsAdministrator());
  connect(m_ui->actPreferences, &QAction::triggered, this, [this] { Preferences(this).exec(); });
  connect(m_ui->actNewBranch, &QAction::triggered, this, &MainWindow::NewBranch);
  connect(m_ui->actMailing, &QAction::triggered, this, [this] { m_mailing.Open(nullptr, 0); });
  connect(m_ui->actWriteToPeople, &QAction::triggered, this, [this] { m_mailing.Open(m_node, SelectedId()); });
  connect(m_ui->actHistory, &QAction::triggered, this, &MainWindow::ShowHistory);
  connect(m_ui->actRefresh, &QAction::triggered, m_ui->statusBar, &QStatusBar::clearMessage);
  connect(m_ui->actRefresh, &QAction::triggered, this, &MainWindow::Refresh);
  connect(m_ui->actFind, &QAction::triggered, m_ui->txtSearch, [box = m_ui->txtSearch] {
    box->setFocus(Qt::ShortcutFocusReason);
    box->selectAll();
  });
  connect(m_ui->actQuit, &QAction::triggered, this, &QWidget::close);
  connect(m_ui->actHelp, &QAction::triggered, this, [this] { OpenHelp(m_texts.title, m_texts.helpFile); });
  connect(m_ui->actShortcuts, &QAction::triggered, this,
          [this] { Q_EMIT ShortcutsWanted(ShortcutsPage(*m_ui->mainMenu)); });
  connect(m_ui->actAbout, &QAction::triggered, this, [this] { ShowAbout(this, m_texts.title); });
  m_ui->actHelp->setVisible(!m_texts.helpFile.isEmpty());
  m_ui->actShortcuts->setVisible(!m_texts.helpFile.isEmpty());
  m_ui->recordList->addActions({m_ui->actAdd, m_ui->actModify, m_ui->actDelete, m_ui->actRecover, m_ui->actNewBranch,
                                m_ui->actHistory, m_ui->actWriteToPeople, m_ui->actRefresh});
}

void MainWindow::SetUpStatusBar() {
  auto* label = new QLabel(
      u"Usuario: %1   ·   Base de datos: %2"_s.arg(m_texts.user, EndOf(m_texts.database, longestShownPath)), this);
  label->setObjectName(u"lblSession"_s);
  label->setTextFormat(Qt::PlainText);
  label->setToolTip(texts::AsItStands(m_texts.database));
  m_ui->statusBar->addPermanentWidget(label);
}

// What is not as usual stands in the title and in a strip that stays.
void MainWindow::SetUpStrips() {
  const auto tell = [this](const QString& subject, const QString& text, const QString& inTitle) {
    m_ui->strips->Tell({.subject = subject, .text = text, .tone = StripText::Tone::Attention});
    m_texts.title += u" (%1)"_s.arg(inTitle);
  };
  if (m_texts.demonstration) {
    tell(u"stripDemonstration"_s, u"Demostración: los datos son inventados."_s, u"Demostración"_s);
  }
  if (m_texts.readOnly) {
    const QString reason = m_texts.onServer
                               ? u"su usuario solo puede leer la base de datos. Pida permiso a quien la administra."_s
                               : u"el archivo de la base de datos o su carpeta no se pueden escribir."_s;
    tell(u"stripReadOnly"_s, u"Solo lectura: %1 Los cuadros se abren sin «Aceptar»."_s.arg(reason), u"solo lectura"_s);
  }
  connect(m_ui->strips, &Strips::Left, m_ui->recordList, qOverload<>(&QWidget::setFocus));
}

void MainWindow::Announce(const QString& news) {
  m_ui->statusBar->showMessage(news, newsTime);
}

void MainWindow::ShowNode(const Node& node) {
  StoreLayout();
  m_ui->statusBar->clearMessage();
  m_node = &node;
  m_live->Follow(nullptr);
  m_shown = false;
  m_readFailed = false;
  m_selectWhenRead.clear();
  m_ui->txtSearch->clear();
  const ListLayout layout =
      LoadListLayout(node.id, static_cast<int>(node.columns.size()), node.sortColumn, node.sortOrder);
  m_ui->recordList->Show({RecordData(node.columns), layout.sortColumn}, layout.order, node.typedColumn);
  m_ui->recordList->SetColumnWidths(layout.widths);
  setWindowTitle(u"%1 – %2"_s.arg(node.title, m_texts.title));
  setProperty(HelpDesk::topicProperty, HelpTopic(node));
  Refresh();
}

void MainWindow::ShowList(SortedRecords& records) {
  m_readFailed = false;
  if (m_shown) {
    m_ui->recordList->Refresh(std::move(records));
  } else {
    m_shown = true;
    m_ui->recordList->Show(std::move(records), m_ui->recordList->Records().SortOrder(), m_node->typedColumn);
    m_ui->recordList->SetColumnWidths(m_ui->recordList->ChosenWidths());
  }
  m_live->Follow(m_node);
  Select(std::exchange(m_selectWhenRead, {}));
  UpdateState();
}

void MainWindow::ShowReadError(const automation::Error& error) {
  m_readFailed = true;
  UpdateState();
  ShowError(this, m_texts.title, u"No se ha podido leer la lista «%1»."_s.arg(m_node->title), error);
}

void MainWindow::Add() {
  if (m_node == nullptr || !m_node->canAdd) {
    return;
  }
  const Node& node = *m_node;
  try {
    const int highest = HighestKey(m_bridge.OpenConnection(), node);
    m_ui->statusBar->clearMessage();
    m_dialogs.Add(node);
    if (m_bridge.IsEnding()) {
      return;
    }
    // Another user may have added records, too; the one just accepted is the youngest.
    const RecordData added = ReadRecordsAbove(m_bridge.OpenConnection(), node, highest);
    QList<int> ids;
    for (int row = 0; row < added.Size(); ++row) {
      ids.append(added.Id(row));
    }
    const QList<int> youngest = ids.isEmpty() ? ids : QList<int>{*std::max_element(ids.cbegin(), ids.cend())};
    if (!ids.isEmpty() && !ReadsAllAnew(youngest)) {
      m_ui->recordList->Update(ids, added);
      Select(youngest);
      UpdateState();
    }
  } catch (const automation::Error& error) {
    ShowError(this, m_texts.title, u"No se ha podido leer la base de datos."_s, error);
  }
  m_ui->recordList->setFocus();
}

void MainWindow::Modify() {
  if (m_node != nullptr && m_node->hasDialog && SelectedId() != 0) {
    Open(*m_node, SelectedId(), SelectedName());
  }
}

void MainWindow::Open(const Node& node, int id, const QString& name) {
  m_ui->statusBar->clearMessage();
  m_dialogs.Modify(node, id, name);
  if (m_node->id == node.id) {
    ShowChanged({id});
  }
}

void MainWindow::NewBranch() {
  if (m_node != nullptr && m_node->id == cConstNodo().Bancos() && SelectedId() != 0) {
    const int bank = SelectedId();
    m_ui->statusBar->clearMessage();
    m_dialogs.AddBranch(bank, SelectedName());
    ShowChanged({bank});
  }
}

void MainWindow::Delete() {
  const QList<DeletionTarget> targets = SelectedTargets();
  if (m_node == nullptr || !m_node->canDelete || targets.isEmpty()) {
    return;
  }
  try {
    DeleteTargets(targets);
  } catch (const automation::Error& error) {
    ShowError(this, m_texts.title, u"No se ha podido eliminar."_s, error);
    Refresh();
  }
}

void MainWindow::DeleteTargets(const QList<DeletionTarget>& targets) {
  // Otherwise each of the records would fail with the same long text.
  ComponentBridge::CheckComponent();
  const std::optional<DeletionResult> result = DeleteAsTheUserSays(this, m_bridge, *m_node, targets);
  if (!result || m_bridge.IsEnding()) {
    return;
  }
  if (!result->notes.isEmpty()) {
    m_deletions.append(result->notes);
  }
  Announce(DeletionHeadline(*result));
  QList<int> ids;
  for (const DeletionTarget& target : targets) {
    ids.append(target.id);
  }
  ShowChanged(ids);
}

void MainWindow::UndoDelete() {
  if (!m_deletions.isEmpty()) {
    RecoverAndShow(m_deletions.takeLast());
  }
}

void MainWindow::RecoverAndShow(const QList<int>& notes) {
  const QList<Recovery> recoveries = Recover(notes);
  QList<int> ids;
  for (const Recovery& recovery : recoveries) {
    ids.append(recovery.id);
  }
  if (ids.isEmpty() || m_node == nullptr) {
    return;
  }
  // The user may be at another list.
  const int node = recoveries.constFirst().nodeId;
  if (node == m_node->id) {
    ShowChanged(ids, ids);
  } else {
    ChooseNode(node);
    m_selectWhenRead = ids;
  }
}

void MainWindow::RecoverSelected() {
  if (m_node != nullptr && m_node->canRecover) {
    const QList<int> notes = m_ui->recordList->SelectedIds();
    Recover(notes);
    ShowChanged(notes);
  }
}

QList<Recovery> MainWindow::Recover(const QList<int>& notes) {
  QList<Recovery> recoveries;
  try {
    m_bridge.OpenConnection();
    DeletionLog log(m_bridge.Session());
    for (const int note : notes) {
      recoveries.append(log.Recover(note));
    }
  } catch (const automation::Error& error) {
    ShowError(this, m_texts.title, u"No se ha podido recuperar."_s, error);
  }
  Announce(RecoveryHeadline(recoveries));
  ShowRefusedRecoveries(this, m_texts.title, recoveries);
  return recoveries;
}

void MainWindow::ShowLocks() {
  LocksDialog(m_bridge.Session(), this).exec();
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
          .openRecord = [this](int nodeId, int id) { m_dialogs.Modify(*FindNode(nodeId), id, {}); },
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

void MainWindow::ShowHistory() {
  if (m_node == nullptr || SelectedId() == 0) {
    return;
  }
  try {
    HistoryDialog(SelectedName(), ChangesOf(m_bridge.OpenConnection(), m_node->table, SelectedId(), mostShownChanges),
                  this)
        .exec();
  } catch (const automation::Error& error) {
    ShowError(this, m_texts.title, u"No se ha podido leer el historial."_s, error);
  }
}

QList<DeletionTarget> MainWindow::SelectedTargets() const {
  const RecordModel& records = m_ui->recordList->Records();
  QList<DeletionTarget> targets;
  const QList<int> rows = m_ui->recordList->SelectedRows();
  for (const int row : rows) {
    targets.append({records.IdAt(row), records.NameAt(row, m_node->nameColumns)});
  }
  return targets;
}

QString MainWindow::SelectedName() const {
  const QList<DeletionTarget> targets = SelectedTargets();
  return targets.isEmpty() ? QString() : targets.constFirst().name;
}

void MainWindow::Refresh() {
  if (m_node != nullptr) {
    m_loader.Load(*m_node, m_ui->recordList->Records().SortColumn());
    UpdateState();
  }
}

void MainWindow::ShowChanged(const QList<int>& ids, const QList<int>& selected) {
  if (m_bridge.IsEnding() || ids.isEmpty() || ReadsAllAnew(selected)) {
    return;
  }
  try {
    m_ui->recordList->Update(ids, ReadRecords(m_bridge.OpenConnection(), *m_node, ids));
  } catch (const automation::Error& error) {
    ShowReadError(error);
  }
  Select(selected);
  UpdateState();
}

bool MainWindow::ReadsAllAnew(const QList<int>& selected) {
  if (m_shown && !m_loader.IsLoading()) {
    return false;
  }
  m_selectWhenRead = selected;
  Refresh();
  return true;
}

void MainWindow::Select(const QList<int>& ids) {
  if (!ids.isEmpty() && !m_ui->recordList->SelectRecords(ids)) {
    m_ui->txtSearch->clear();
    m_ui->recordList->SelectRecords(ids);
  }
}

void MainWindow::Search(const QString& typed) {
  m_ui->recordList->SetFilter(typed);
  UpdateState();
}

void MainWindow::UpdateState() {
  const RecordList& list = *m_ui->recordList;
  const qsizetype selected = list.SelectedCount();
  const bool mayChange = m_node != nullptr && !m_texts.readOnly;
  m_ui->actAdd->setEnabled(mayChange && m_node->canAdd);
  m_ui->actModify->setEnabled(m_node != nullptr && m_node->hasDialog && selected == 1);
  m_ui->actDelete->setEnabled(mayChange && m_node->canDelete && selected > 0);
  m_ui->actUndoDelete->setEnabled(mayChange && !m_deletions.isEmpty());
  m_ui->actRecover->setVisible(m_node != nullptr && m_node->canRecover);
  m_ui->actRecover->setEnabled(mayChange && m_node->canRecover && selected > 0);
  m_ui->actNewBranch->setVisible(m_node != nullptr && m_node->id == cConstNodo().Bancos());
  m_ui->actNewBranch->setEnabled(mayChange && m_node->id == cConstNodo().Bancos() && selected == 1);
  m_ui->actWriteToPeople->setVisible(m_node != nullptr && MailingOpener::IsFor(*m_node));
  m_ui->actWriteToPeople->setEnabled(m_node != nullptr && MailingOpener::IsFor(*m_node) && selected == 1);
  m_ui->actHistory->setEnabled(m_node != nullptr && m_node->hasDialog && selected == 1);
  m_ui->actRefresh->setEnabled(m_node != nullptr);
  m_ui->lblHits->setText(CountText(list.Records().rowCount(), list.Records().TotalCount()));
  m_ui->recordList->SetEmptyText(EmptyText());
}

QString MainWindow::EmptyText() const {
  if (m_node == nullptr) {
    return u"Elija a la izquierda qué registros quiere ver."_s;
  }
  if (m_loader.IsLoading()) {
    return u"Leyendo la lista…"_s;
  }
  if (m_ui->recordList->Records().TotalCount() > 0) {
    return u"Ningún registro contiene «%1». Pulse Esc en el cuadro de búsqueda para verlos todos."_s.arg(
        m_ui->txtSearch->text().trimmed());
  }
  if (m_readFailed) {
    return u"No se ha podido leer la lista. Pulse F5 para volver a intentarlo."_s;
  }
  if (m_node->canRecover) {
    return u"No hay registros eliminados que se puedan recuperar."_s;
  }
  return m_ui->actAdd->isEnabled() ? u"No hay registros. Pulse Ins o «Agregar» para añadir el primero."_s
                                   : u"No hay registros."_s;
}

int MainWindow::SelectedId() const {
  const QList<int> ids = m_ui->recordList->SelectedIds();
  return ids.size() == 1 ? ids.first() : 0;
}

void MainWindow::StoreLayout() const {
  if (m_node == nullptr) {
    return;
  }
  const RecordList& list = *m_ui->recordList;
  SaveListLayout(m_node->id, {list.ChosenWidths(), list.Records().SortColumn(), list.Records().SortOrder()});
  SaveLastNode(m_node->id);
}

}  // namespace host
