#include "framework/Form.h"

#include "framework/ControlSetup.h"
#include "framework/FocusWatch.h"
#include "framework/Help.h"
#include "framework/ReturnToWindow.h"
#include "framework/ScreenFit.h"
#include "framework/Termination.h"
#include "platform/automation/Error.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLayout>
#include <QScopedValueRollback>
#include <QScreen>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace framework {
namespace {

// One for a control, however many handlers want to know.
FocusWatch* WatchOf(QWidget* control) {
  auto* watch = control->findChild<FocusWatch*>(QString(), Qt::FindDirectChildrenOnly);
  return watch != nullptr ? watch : new FocusWatch(control);
}

}  // namespace

Form::Form(const QString& name) {
  setObjectName(name);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

Form::~Form() = default;

void Form::Load() {
  if (m_loaded) {
    return;
  }
  DestroyControls();
  m_error = nullptr;
  m_activated = false;
  CreateControls();
  PrepareControls(*this);
  m_loaded = true;
  Guard([this] { OnLoad(); });
  RethrowKeptError();
}

void Form::ShowModal() {
  if (m_shown) {
    throw automation::Error(automation::FormAlreadyShown);
  }
  const QScopedValueRollback shown(m_shown, true);
  Load();
  if (m_loaded && HasLoadFailed()) {
    Unload();
  }
  if (m_loaded) {
    SizeControls(*this);
    ChooseSize();
    const ReturnToWindow back;
    const Termination::Watch watch;
    exec();
  }
  RethrowKeptError();
}

void Form::Unload() {
  RequestUnload(FormCode);
}

bool Form::RequestUnload(UnloadMode mode) {
  // While the close prompt presses Accept, Accept unloads the form, too: the outer call finishes that.
  if (!m_loaded || m_unloading) {
    return true;
  }
  m_unloading = true;
  bool cancel = false;
  KeepError([&] { OnQueryUnload(cancel, mode); });
  if (cancel && !m_error) {
    m_unloading = false;
    return false;
  }
  FinishUnload();
  return true;
}

void Form::FinishUnload() {
  m_unloading = true;
  KeepError([this] { OnUnload(); });
  m_loaded = false;
  m_unloading = false;
  done(Rejected);
}

void Form::Guard(const std::function<void()>& handler) {
  // Events that waited while the program was busy may reach a form that is gone.
  if (!m_loaded) {
    return;
  }
  if (!KeepError(handler) && m_loaded && !m_unloading) {
    FinishUnload();
  }
}

bool Form::KeepError(const std::function<void()>& handler) {
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

void Form::RethrowKeptError() {
  if (m_error) {
    std::rethrow_exception(std::exchange(m_error, nullptr));
  }
}

void Form::OnEnter(QWidget* control, const std::function<void()>& handler) {
  On(WatchOf(control), &FocusWatch::Entered, handler);
}

void Form::OnLeave(QWidget* control, const std::function<void()>& handler) {
  On(WatchOf(control), &FocusWatch::Left, handler);
}

void Form::OnChosen(QComboBox* combo, const std::function<void()>& handler) {
  On(combo, &QComboBox::currentIndexChanged, [handler](int index) {
    if (index >= 0) {
      handler();
    }
  });
}

void Form::OnQueryUnload(bool& /*cancel*/, UnloadMode /*mode*/) {}

void Form::DestroyControls() {
  delete layout();
  qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
}

void Form::ChooseSize() {
  // Room for the caption in bold beside the title bar's icon and buttons, which take about twelve digits.
  QFont bold = font();
  bold.setBold(true);
  const int wanted = QFontMetrics(bold).horizontalAdvance(windowTitle() + u"000000000000"_s);
  const int widened = std::min(wanted, screen()->availableSize().width() / 2);
  resize(FitToScreen(*this, sizeHint().expandedTo(QSize(widened, 0))));
}

void Form::SetCaption(QString text) {
  // "[*]" is Qt's mark of a modified document; doubled it is shown.
  setWindowTitle(text.replace("[*]"_L1, "[*][*]"_L1));
}

QObjectList Form::Controls() const {
  QObjectList controls;
  const QList<QObject*> children = findChildren<QObject*>();
  for (QObject* child : children) {
    const bool isControl = child->isWidgetType() || qobject_cast<QAction*>(child) != nullptr;
    if (isControl && !child->objectName().isEmpty() && !child->objectName().startsWith("qt_"_L1)) {
      controls.append(child);
    }
  }
  return controls;
}

void Form::reject() {
  RequestUnload(FormControlMenu);
}

void Form::closeEvent(QCloseEvent* event) {
  event->setAccepted(RequestUnload(FormControlMenu));
}

void Form::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) {
    Guard([] { Help::Show(); });
    return;
  }
  QDialog::keyPressEvent(event);
}

void Form::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!m_activated) {
    m_activated = true;
    Guard([this] { OnActivate(); });
  }
}

}  // namespace framework
