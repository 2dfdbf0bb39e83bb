#include "support/FirstPaint.h"

#include "framework/Form.h"

#include <QApplication>
#include <QTimer>

namespace bench {

Elapsed FirstPaint::Measure(const std::function<void()>& open, const std::function<void(QDialog&)>& look) {
  FirstPaint watch;
  watch.m_look = look;
  qApp->installEventFilter(&watch);
  watch.m_stopwatch = {};
  open();
  if (watch.m_dialog == nullptr) {
    qFatal("nothing was painted");
  }
  return watch.m_elapsed;
}

bool FirstPaint::eventFilter(QObject* watched, QEvent* event) {
  if (m_dialog == nullptr && event->type() == QEvent::Paint) {
    m_dialog = qobject_cast<QDialog*>(watched);
    if (m_dialog != nullptr) {
      // Its controls are painted in the same turn.
      QTimer::singleShot(0, this, [this] { Stop(); });
    }
  }
  return false;
}

void FirstPaint::Stop() {
  m_elapsed = m_stopwatch.Read();
  if (m_look) {
    m_look(*m_dialog);
  }
  if (auto* form = qobject_cast<framework::Form*>(m_dialog)) {
    form->Unload();
  } else {
    m_dialog->done(QDialog::Rejected);
  }
}

}  // namespace bench
