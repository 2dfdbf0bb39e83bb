#include "host/help/HelpWindow.h"

#include "host/help/HelpBrowser.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QScreen>
#include <QSettings>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int smallestSteps = -4;
constexpr int largestSteps = 16;
constexpr QSize usualSize(900, 720);
constexpr int leftWidth = 270;
constexpr int margin = 6;
// In milliseconds: until then the desktop has put its frame around a window that was shown.
constexpr int frameTime = 100;
constexpr int placeRole = Qt::UserRole;
constexpr int pageRole = Qt::UserRole + 1;

const QString geometryKey = u"Ayuda/Ventana"_s;
const QString splitterKey = u"Ayuda/Reparto"_s;
const QString stepsKey = u"Ayuda/Texto"_s;

}  // namespace

HelpWindow::HelpWindow(Pages& pages)
    : m_pages(pages),
      m_browser(new HelpBrowser(pages, this)),
      m_splitter(new QSplitter(this)),
      m_words(new QLineEdit(this)),
      m_left(new QStackedWidget(this)),
      m_contents(new QTreeWidget(this)),
      m_hits(new QListWidget(this)),
      m_none(new QLabel(this)) {
  setObjectName(u"helpWindow"_s);
  setWindowTitle(u"Ayuda de Kel"_s);
  // The program ends with its own windows.
  setAttribute(Qt::WA_QuitOnClose, false);
  m_browser->setObjectName(u"helpPage"_s);
  m_browser->setAccessibleName(u"Página de la ayuda"_s);
  SetUpLeftSide();
  m_splitter->addWidget(m_browser);
  m_splitter->setStretchFactor(1, 1);
  m_splitter->setChildrenCollapsible(false);
  m_splitter->setContentsMargins(margin, margin, margin, 0);
  setCentralWidget(m_splitter);
  SetUpBar();
  statusBar()->setObjectName(u"helpStatus"_s);
  connect(m_browser, &HelpBrowser::LedOutside, this, &HelpWindow::TellOfOutside);
  connect(m_browser, &QTextBrowser::sourceChanged, statusBar(), &QStatusBar::clearMessage);
  connect(m_browser, &QTextBrowser::sourceChanged, this, &HelpWindow::ShowPlaceInContents);
  const QSettings settings;
  if (!restoreGeometry(settings.value(geometryKey).toByteArray())) {
    resize(usualSize.boundedTo(screen()->availableSize()));
  }
  if (!m_splitter->restoreState(settings.value(splitterKey).toByteArray())) {
    m_splitter->setSizes({leftWidth, usualSize.width() - leftWidth});
  }
  Enlarge(settings.value(stepsKey).toInt());
}

HelpWindow::~HelpWindow() {
  Remember();
}

void HelpWindow::Remember() const {
  QSettings settings;
  settings.setValue(geometryKey, saveGeometry());
  settings.setValue(splitterKey, m_splitter->saveState());
  settings.setValue(stepsKey, m_steps);
}

void HelpWindow::SetUpBar() {
  auto* bar = addToolBar(u"Barra de la ayuda"_s);
  bar->setObjectName(u"helpBar"_s);
  bar->setMovable(false);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  const auto add = [&](const QString& name, const QString& icon, const QString& text, const QKeySequence& keys,
                       const auto& act) {
    QAction* action = bar->addAction(QIcon::fromTheme(icon), text, this, act);
    action->setObjectName(name);
    action->setShortcut(keys);
    action->setToolTip(u"%1 (%2)"_s.arg(text, keys.toString(QKeySequence::NativeText)));
    return action;
  };
  QAction* back =
      add(u"actHelpBack"_s, u"go-previous"_s, u"Atrás"_s, Qt::ALT | Qt::Key_Left, [this] { m_browser->backward(); });
  QAction* forward =
      add(u"actHelpForward"_s, u"go-next"_s, u"Adelante"_s, Qt::ALT | Qt::Key_Right, [this] { m_browser->forward(); });
  add(u"actHelpFirst"_s, u"go-home"_s, u"Contenido"_s, Qt::ALT | Qt::Key_Home,
      [this] { m_browser->ShowPage(Pages::first); });
  add(u"actHelpFind"_s, u"edit-find"_s, u"Buscar"_s, QKeySequence(QKeySequence::Find), [this] {
    m_words->setFocus(Qt::ShortcutFocusReason);
    m_words->selectAll();
  });
  bar->addSeparator();
  add(u"actHelpSmaller"_s, u"zoom-out"_s, u"Más pequeño"_s, Qt::CTRL | Qt::Key_Minus, [this] { Enlarge(-1); });
  add(u"actHelpLarger"_s, u"zoom-in"_s, u"Más grande"_s, Qt::CTRL | Qt::Key_Plus, [this] { Enlarge(1); });
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(m_browser, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(m_browser, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
}

void HelpWindow::SetUpLeftSide() {
  m_words->setObjectName(u"helpWords"_s);
  m_words->setAccessibleName(u"Buscar en la ayuda"_s);
  m_words->setPlaceholderText(u"Buscar en la ayuda"_s);
  m_words->setClearButtonEnabled(true);
  m_contents->setObjectName(u"helpContents"_s);
  m_contents->setAccessibleName(u"Contenido de la ayuda"_s);
  m_contents->setHeaderHidden(true);
  m_hits->setObjectName(u"helpHits"_s);
  m_hits->setAccessibleName(u"Lo que se ha encontrado"_s);
  m_hits->setWordWrap(true);
  m_hits->setAlternatingRowColors(true);
  m_hits->setSpacing(2);
  m_none->setTextFormat(Qt::PlainText);
  m_none->setWordWrap(true);
  m_none->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  for (QWidget* part :
       {static_cast<QWidget*>(m_contents), static_cast<QWidget*>(m_hits), static_cast<QWidget*>(m_none)}) {
    m_left->addWidget(part);
  }
  auto* side = new QWidget(this);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(m_words);
  column->addWidget(m_left);
  m_splitter->addWidget(side);
  FillContents();
  connect(m_contents, &QTreeWidget::currentItemChanged, this, &HelpWindow::ShowContentsEntry);
  connect(m_words, &QLineEdit::textChanged, this, &HelpWindow::Search);
  connect(m_words, &QLineEdit::returnPressed, this, [this] {
    m_hits->setFocus();
    m_hits->setCurrentRow(0);
  });
  connect(m_hits, &QListWidget::currentItemChanged, this, &HelpWindow::ShowHit);
}

void HelpWindow::FillContents() {
  QTreeWidgetItem* group = nullptr;
  for (const Pages::Entry& entry : m_pages.Contents()) {
    if (group == nullptr || group->text(0) != entry.group) {
      group = new QTreeWidgetItem(m_contents, {entry.group});
      group->setFlags(Qt::ItemIsEnabled);
    }
    (new QTreeWidgetItem(group, {entry.title}))->setData(0, pageRole, entry.page);
  }
  m_contents->expandAll();
}

void HelpWindow::ShowPlaceInContents(const QUrl& shown) {
  const QSignalBlocker quiet(m_contents);
  m_contents->setCurrentItem(nullptr);
  for (QTreeWidgetItemIterator it(m_contents); *it != nullptr; ++it) {
    if ((*it)->data(0, pageRole).toString() == m_pages.PageOf(shown)) {
      m_contents->setCurrentItem(*it);
    }
  }
}

void HelpWindow::ShowContentsEntry() {
  const QTreeWidgetItem* item = m_contents->currentItem();
  const QString page = item != nullptr ? item->data(0, pageRole).toString() : QString();
  if (!page.isEmpty()) {
    m_browser->ShowPage(page);
  }
}

void HelpWindow::Search(const QString& words) {
  m_hits->clear();
  for (const Pages::Hit& hit : m_pages.Search(words)) {
    auto* item = new QListWidgetItem(hit.line == hit.title ? hit.title : hit.title + u'\n' + hit.line, m_hits);
    item->setData(pageRole, hit.page);
    item->setData(placeRole, hit.position);
  }
  m_none->setText(
      u"Ninguna página contiene «%1». Pruebe con menos palabras, o con parte de una."_s.arg(words.trimmed()));
  QWidget* found = m_hits->count() > 0 ? static_cast<QWidget*>(m_hits) : m_none;
  m_left->setCurrentWidget(words.trimmed().isEmpty() ? m_contents : found);
}

void HelpWindow::ShowHit() {
  if (const QListWidgetItem* hit = m_hits->currentItem()) {
    m_browser->ShowLine(hit->data(pageRole).toString(), hit->data(placeRole).toInt());
  }
}

void HelpWindow::Enlarge(int steps) {
  const int wanted = std::clamp(m_steps + steps, smallestSteps, largestSteps);
  m_browser->zoomIn(wanted - m_steps);
  m_steps = wanted;
}

void HelpWindow::TellOfOutside(const QUrl& url) {
  const QString address = url.toDisplayString();
  const bool isWeb = url.scheme() == u"https"_s || url.scheme() == u"http"_s;
  if (!isWeb || !QDesktopServices::openUrl(url)) {
    statusBar()->showMessage(u"Este enlace sale del manual y no se abre: %1"_s.arg(address));
  }
}

void HelpWindow::ShowTopic(const QString& page, const QString& anchor) {
  m_words->clear();
  m_browser->ShowPage(page, anchor);
  m_browser->setFocus();
}

void HelpWindow::ShowBeside(QWidget* dialog) {
  QWindow* beside = dialog != nullptr ? dialog->window()->windowHandle() : nullptr;
  winId();
  if (windowHandle()->transientParent() != beside) {
    // A modal window blocks all others but those that belong to it; whether one is blocked is looked at when it is
    // shown.
    hide();
    windowHandle()->setTransientParent(beside);
    if (beside != nullptr) {
      connect(beside, &QWindow::visibleChanged, this, &HelpWindow::FindOtherDialog, Qt::QueuedConnection);
      connect(beside, &QObject::destroyed, this, &HelpWindow::FindOtherDialog, Qt::QueuedConnection);
    }
  }
  if (isMinimized()) {
    showNormal();
  }
  show();
  if (dialog != nullptr) {
    QTimer::singleShot(frameTime, this, [this, place = dialog->window()->frameGeometry()] { LeaveFree(place); });
  }
  raise();
  activateWindow();
}

// The side of the screen where there is more room, when the window would lie over the dialog.
void HelpWindow::LeaveFree(const QRect& dialog) {
  const QRect free = screen()->availableGeometry();
  QRect place = frameGeometry();
  if (!place.intersects(dialog) || isMaximized() || isFullScreen()) {
    return;
  }
  if (free.right() - dialog.right() >= dialog.left() - free.left()) {
    place.moveLeft(std::min(dialog.right() + 1, free.right() + 1 - place.width()));
  } else {
    place.moveRight(std::max(dialog.left() - 1, free.left() - 1 + place.width()));
  }
  move(place.topLeft());
}

void HelpWindow::FindOtherDialog() {
  const QWindow* beside = windowHandle()->transientParent();
  QWidget* dialog = QApplication::activeModalWidget();
  const bool isBox = qobject_cast<QMessageBox*>(dialog) != nullptr;
  if (!isVisible() || (beside != nullptr && beside->isVisible()) || dialog == nullptr || isBox) {
    return;
  }
  setAttribute(Qt::WA_ShowWithoutActivating);
  hide();
  windowHandle()->setTransientParent(dialog->windowHandle());
  show();
  setAttribute(Qt::WA_ShowWithoutActivating, false);
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) {
    QMainWindow::keyPressEvent(event);
  } else if (m_words->text().isEmpty()) {
    close();
  } else {
    m_words->clear();
  }
}

}  // namespace host
