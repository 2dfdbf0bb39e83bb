#include "host/mailing/window/PreviewPanel.h"

#include "documents/people/Names.h"
#include "host/mailing/window/ElidedLabel.h"
#include "host/mailing/window/EnvelopeDialog.h"
#include "paper/PageView.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

PreviewPanel::PreviewPanel(QWidget* parent)
    : QWidget(parent),
      m_pages(NoPages()),
      m_view(new paper::PageView(this)),
      m_text(new QLabel(this)),
      m_count(new QLabel(this)),
      m_name(new ElidedLabel(this)),
      m_zoom(new QComboBox(this)) {
  m_look.envelope = EnvelopeWindow();
  m_view->setObjectName(u"pagVista"_s);
  m_view->setAccessibleName(u"Vista previa"_s);
  m_view->installEventFilter(this);
  m_text->setObjectName(u"lblSinVista"_s);
  m_text->setTextFormat(Qt::PlainText);
  m_text->setWordWrap(true);
  m_text->setAlignment(Qt::AlignCenter);
  m_text->setMargin(fontMetrics().height() * 2);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->setSpacing(0);
  AddBar();
  setTabOrder(m_zoom, m_view);
  layout->addWidget(m_view, 1);
  layout->addWidget(m_text, 1);
  ShowText({});
}

PreviewPanel::~PreviewPanel() = default;

void PreviewPanel::AddBar() {
  auto* row = new QWidget(this);
  auto* rows = new QVBoxLayout(row);
  const int gap = fontMetrics().height() / 3;
  rows->setContentsMargins(gap, gap, gap, gap);
  // Side by side they would take the width of a small screen from the fields.
  auto* bar = new QHBoxLayout;
  auto* looks = new QHBoxLayout;
  rows->addLayout(bar);
  rows->addLayout(looks);
  m_count->setObjectName(u"lblPiezas"_s);
  m_name->setObjectName(u"lblPersona"_s);
  constexpr int nameLetters = 4;
  m_name->setMinimumWidth(nameLetters * fontMetrics().averageCharWidth());
  m_zoom->setObjectName(u"cboTamano"_s);
  m_zoom->setAccessibleName(u"Tamaño en pantalla"_s);
  m_zoom->addItems({u"Página entera"_s, u"Anchura"_s, u"100 %"_s, u"150 %"_s});
  AddLeaf(*bar, "cmdPrimera", u"Primera"_s, u"go-first"_s, u"|<"_s, QKeySequence(u"Shift+F7"_s), [] { return 0; });
  AddLeaf(*bar, "cmdAnterior", u"Anterior"_s, u"go-previous"_s, u"<"_s, QKeySequence(u"F7"_s),
          [this] { return m_part - 1; });
  m_number = new QSpinBox(row);
  m_number->setObjectName(u"numPieza"_s);
  m_number->setAccessibleName(u"Número"_s);
  m_number->setKeyboardTracking(false);
  bar->addWidget(m_number);
  bar->addWidget(m_count);
  AddLeaf(*bar, "cmdSiguiente", u"Siguiente"_s, u"go-next"_s, u">"_s, QKeySequence(u"F8"_s),
          [this] { return m_part + 1; });
  AddLeaf(*bar, "cmdUltima", u"Última"_s, u"go-last"_s, u">|"_s, QKeySequence(u"Shift+F8"_s),
          [this] { return m_number->maximum() - 1; });
  bar->addWidget(m_name, 1);
  AddSwitch(*looks, m_tint, u"Resaltar"_s, u"Ver sobre un fondo los datos de cada persona"_s, "chkResaltar",
            &PreviewLook::tintsValues);
  AddSwitch(*looks, m_envelope, u"Sobre"_s, u"Ver dónde está la ventana del sobre"_s, "chkVentana",
            &PreviewLook::showsEnvelope);
  AddSwitch(*looks, m_edges, u"Bordes"_s, u"Ver los bordes de las etiquetas"_s, "chkBordes", &PreviewLook::showsEdges);
  looks->addStretch(1);
  looks->addWidget(m_zoom);
  layout()->addWidget(row);
  connect(m_number, &QSpinBox::valueChanged, this, [this](int number) { Leaf(number - 1); });
  connect(m_zoom, &QComboBox::activated, this, &PreviewPanel::ChooseZoom);
}

void PreviewPanel::AddSwitch(QHBoxLayout& bar, QAction*& action, const QString& text, const QString& tip,
                             const char* name, bool PreviewLook::*look) {
  action = new QAction(text, this);
  action->setCheckable(true);
  action->setToolTip(tip);
  action->setChecked(m_look.*look);
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setDefaultAction(action);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  bar.addWidget(button);
  connect(action, &QAction::changed, button, [button, action] { button->setVisible(action->isVisible()); });
  connect(action, &QAction::toggled, this, [this, look](bool on) {
    m_look.*look = on;
    ShowPart();
  });
}

void PreviewPanel::AddLeaf(QHBoxLayout& bar, const char* name, const QString& text, const QString& icon,
                           const QString& brief, const QKeySequence& key, const std::function<int()>& target) {
  auto* action = new QAction(QIcon::fromTheme(icon), text, this);
  action->setIconText(brief);
  action->setShortcut(key);
  action->setToolTip(u"%1 (%2)"_s.arg(text, key.toString(QKeySequence::NativeText)));
  auto* button = new QToolButton(this);
  button->setDefaultAction(action);
  button->setObjectName(QString::fromLatin1(name));
  button->setAccessibleName(text);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  // Without an icon theme the text shows.
  button->setToolButtonStyle(action->icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly);
  bar.addWidget(button);
  m_leaves.append(action);
  connect(action, &QAction::triggered, this, [this, target] { Leaf(target()); });
}

void PreviewPanel::FillMenu(QMenu& menu) {
  menu.addActions(m_leaves);
  menu.addSeparator();
  menu.addActions({m_tint, m_envelope, m_edges});
  menu.addAction(u"Lugar de la ventana del sobre…"_s, this, &PreviewPanel::AskForEnvelope);
}

void PreviewPanel::AskForEnvelope() {
  if (AskForEnvelopeWindow(window())) {
    m_look.envelope = EnvelopeWindow();
    ShowPart();
  }
}

void PreviewPanel::Show(std::shared_ptr<const LetterMailing> letters) {
  const std::shared_ptr<const LabelMailing> before = std::exchange(m_labels, nullptr);
  const std::shared_ptr<const LetterMailing> beforeLetters = std::exchange(m_letters, std::move(letters));
  SetWork(m_letters.get());
}

void PreviewPanel::Show(std::shared_ptr<const LabelMailing> labels, const documents::SheetStart& start) {
  const std::shared_ptr<const LetterMailing> before = std::exchange(m_letters, nullptr);
  const std::shared_ptr<const LabelMailing> beforeLabels = std::exchange(m_labels, std::move(labels));
  m_look.start = start;
  SetWork(m_labels.get());
}

void PreviewPanel::SetWork(const Mailing* work) {
  m_work = work;
  const int part = work == nullptr ? -1 : work->PartFor(m_look.person);
  m_part = part >= 0 ? part : std::clamp(m_part, 0, std::max(0, work == nullptr ? 0 : work->Count() - 1));
  m_text->hide();
  m_view->show();
  ShowPart();
}

void PreviewPanel::ShowText(const QString& text) {
  const std::shared_ptr<const LetterMailing> letters = std::exchange(m_letters, nullptr);
  const std::shared_ptr<const LabelMailing> labels = std::exchange(m_labels, nullptr);
  SetWork(nullptr);
  m_text->setText(text);
  m_text->show();
  m_view->hide();
}

void PreviewPanel::GoTo(int person) {
  m_look.person = person;
  const int part = m_work == nullptr ? -1 : m_work->PartFor(person);
  if (part >= 0 && (part != m_part || m_labels)) {
    m_part = part;
    ShowPart();
  }
}

void PreviewPanel::Leaf(int part) {
  if (m_work == nullptr || m_work->Count() == 0) {
    return;
  }
  const int within = std::clamp(part, 0, m_work->Count() - 1);
  if (within == m_part) {
    return;
  }
  m_part = within;
  if (m_letters) {
    m_look.person = m_letters->PeopleOf(m_part).constFirst().id;
    Q_EMIT PersonReached(m_look.person);
  }
  ShowPart();
}

// The view gets the new pages before the old ones go.
void PreviewPanel::ShowPart() {
  std::unique_ptr<paper::Pages> pages = m_work == nullptr || m_work->Count() == 0 ? NoPages()
                                        : m_letters ? PagesOfLetter(*m_letters, m_part, m_look)
                                                    : PagesOfSheet(*m_labels, m_part, m_look);
  m_view->SetPages(*pages);
  m_pages = std::move(pages);
  ShowState();
}

void PreviewPanel::ShowState() {
  const int count = m_work == nullptr ? 0 : m_work->Count();
  const QSignalBlocker quiet(m_number);
  m_number->setRange(count == 0 ? 0 : 1, count);
  m_number->setValue(count == 0 ? 0 : m_part + 1);
  m_number->setEnabled(count > 1);
  const QString pieces = m_letters ? (count == 1 ? u"carta"_s : u"cartas"_s) : (count == 1 ? u"hoja"_s : u"hojas"_s);
  m_count->setText(u"de %1 %2"_s.arg(QString::number(count), pieces));
  m_name->setText(m_letters && count > 0 ? documents::JointName(m_letters->PeopleOf(m_part)).join(u' ') : QString());
  for (qsizetype i = 0; i < m_leaves.size(); ++i) {
    m_leaves[i]->setEnabled(i < 2 ? m_part > 0 && count > 0 : m_part + 1 < count);
  }
  m_tint->setVisible(m_letters != nullptr);
  m_envelope->setVisible(m_letters != nullptr);
  m_edges->setVisible(m_labels != nullptr);
}

void PreviewPanel::ChooseZoom(int choice) {
  constexpr double larger = 1.5;
  switch (choice) {
    case 0:
      m_view->FitPage();
      break;
    case 1:
      m_view->FitWidth();
      break;
    default:
      m_view->SetZoom(choice == 2 ? 1 : larger);
  }
}

// Behind the last page of a letter comes the next one; arrows leaf where they have nothing to scroll.
bool PreviewPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool isLastPage = m_view->Page() + 1 >= m_view->PageCount();
    if (key == Qt::Key_Right || (key == Qt::Key_PageDown && isLastPage)) {
      Leaf(m_part + 1);
      return true;
    }
    if (key == Qt::Key_Left || (key == Qt::Key_PageUp && m_view->Page() == 0)) {
      Leaf(m_part - 1);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace host
