#include "framework/Formulario.h"

#include "framework/Ayuda.h"
#include "framework/Plataforma.h"
#include "framework/Terminacion.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QScreen>
#include <QTableView>

#include <algorithm>
#include <utility>

namespace {

constexpr int boxCharacters = 34;
constexpr int gridCharacters = 76;
constexpr int gridRows = 10;

}  // namespace

Formulario::Formulario(const QString& name) {
  setObjectName(name);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

Formulario::~Formulario() = default;

void Formulario::Load() {
  if (m_loaded) {
    return;
  }
  DestroyControls();
  m_error = nullptr;
  m_activated = false;
  CrearControles();
  PrepareControls();
  m_loaded = true;
  Guard([this] { Form_Load(); });
  RethrowKeptError();
}

// Sizes follow the font, so that they hold at any scale.
void Formulario::PrepareControls() {
  const int character = fontMetrics().averageCharWidth();
  const int line = fontMetrics().height();
  const QList<QLineEdit*> boxes = findChildren<QLineEdit*>();
  for (QLineEdit* box : boxes) {
    box->setMinimumWidth(boxCharacters * character);
  }
  const QList<QComboBox*> combos = findChildren<QComboBox*>();
  for (QComboBox* combo : combos) {
    combo->setFocusPolicy(Qt::StrongFocus);
    combo->installEventFilter(this);
    // A long item must not make the window wider than the screen.
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(boxCharacters);
  }
  const QList<QTableView*> grids = findChildren<QTableView*>();
  for (QTableView* grid : grids) {
    grid->verticalHeader()->setDefaultSectionSize(line + line / 2);
    grid->setMinimumSize(gridCharacters * character, gridRows * (line + line / 2));
  }
}

void Formulario::ShowModal() {
  Load();
  if (m_loaded && CargaFallida()) {
    Unload();
  }
  if (m_loaded) {
    WidenForCaption();
    const Terminacion::Watch watch;
    exec();
  }
  RethrowKeptError();
}

void Formulario::Unload() {
  RequestUnload(FormCode);
}

bool Formulario::RequestUnload(UnloadMode mode) {
  // While the close prompt presses Accept, Accept unloads the form, too: the outer call finishes that.
  if (!m_loaded || m_unloading) {
    return true;
  }
  m_unloading = true;
  bool cancel = false;
  KeepError([&] { Form_QueryUnload(cancel, mode); });
  if (cancel && !m_error) {
    m_unloading = false;
    return false;
  }
  FinishUnload();
  return true;
}

void Formulario::FinishUnload() {
  m_unloading = true;
  KeepError([this] { Form_Unload(); });
  m_loaded = false;
  m_unloading = false;
  done(Rejected);
}

void Formulario::Guard(const std::function<void()>& handler) {
  if (!m_loaded) {
    return;
  }
  if (!KeepError(handler) && m_loaded && !m_unloading) {
    FinishUnload();
  }
}

bool Formulario::KeepError(const std::function<void()>& handler) {
  try {
    handler();
    return true;
  } catch (...) {
    if (!m_error) {
      m_error = std::current_exception();
    }
    return false;
  }
}

void Formulario::RethrowKeptError() {
  if (m_error) {
    std::rethrow_exception(std::exchange(m_error, nullptr));
  }
}

void Formulario::Form_QueryUnload(bool& /*cancel*/, UnloadMode /*mode*/) {}

void Formulario::DestroyControls() {
  delete layout();
  qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
}

void Formulario::WidenForCaption() {
  // Room for the caption in bold beside the title bar's icon and buttons, which take about twelve digits.
  QFont bold = font();
  bold.setBold(true);
  const int wanted = QFontMetrics(bold).horizontalAdvance(windowTitle() + QStringLiteral("000000000000"));
  resize(sizeHint().expandedTo(QSize(std::min(wanted, screen()->availableSize().width() / 2), 0)));
}

void Formulario::SetCaption(QString text) {
  // "[*]" is Qt's mark of a modified document; doubled it is shown.
  setWindowTitle(text.replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

QObjectList Formulario::Controles() const {
  QObjectList controls;
  const QList<QObject*> children = findChildren<QObject*>();
  for (QObject* child : children) {
    const bool isControl = child->isWidgetType() || qobject_cast<QAction*>(child) != nullptr;
    if (isControl && !child->objectName().isEmpty() && !child->objectName().startsWith(QLatin1String("qt_"))) {
      controls.append(child);
    }
  }
  return controls;
}

void Formulario::reject() {
  RequestUnload(FormControlMenu);
}

void Formulario::closeEvent(QCloseEvent* event) {
  event->setAccepted(RequestUnload(FormControlMenu));
}

void Formulario::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) {
    Guard([] { Ayuda::Show(); });
    return;
  }
  QDialog::keyPressEvent(event);
}

void Formulario::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!m_activated) {
    m_activated = true;
    Guard([this] { Form_Activate(); });
  }
}

bool Formulario::eventFilter(QObject* watched, QEvent* event) {
  // The wheel over a list that does not have the focus scrolls the window under it, it does not change the choice.
  if (event->type() == QEvent::Wheel && qobject_cast<QComboBox*>(watched) != nullptr &&
      !static_cast<QWidget*>(watched)->hasFocus()) {
    event->ignore();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}
