#include "host/help/HelpDesk.h"

#include "host/help/HelpBrowser.h"
#include "host/help/HelpWindow.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// What has the focus, or would have it in a window that is not active yet.
const QWidget* InFront() {
  const QWidget* window = QApplication::activeModalWidget();
  if (window == nullptr) {
    window = QApplication::activeWindow();
  }
  const QWidget* focus = QApplication::focusWidget();
  if (focus == nullptr || (window != nullptr && focus->window() != window)) {
    focus = window != nullptr && window->focusWidget() != nullptr ? window->focusWidget() : window;
  }
  return focus;
}

}  // namespace

HelpDesk::HelpDesk(const QString& file) : m_pages(QFileInfo(file).path()) {
  QDesktopServices::setUrlHandler(u"file"_s, this, "Open");
  qApp->installEventFilter(this);
}

HelpDesk::~HelpDesk() {
  QDesktopServices::unsetUrlHandler(u"file"_s);
}

void HelpDesk::Open(const QUrl& url) {
  if (m_pages.PageOf(url) == Pages::first) {
    ShowWhatIsInFront();
  } else {
    // From inside the handler this goes on to the desktop.
    QDesktopServices::openUrl(url);
  }
}

bool HelpDesk::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1) {
    return false;
  }
  const auto* window = qobject_cast<QWidget*>(watched);
  const bool isBox = qobject_cast<QMessageBox*>(watched) != nullptr;
  if (window == nullptr || !window->isWindow() || isBox || m_pages.Has(window->objectName()) ||
      !m_pages.Has(Pages::first)) {
    return false;
  }
  if (window != m_window.get()) {
    ShowWhatIsInFront();
  }
  return true;
}

HelpDesk::Topic HelpDesk::TopicOf(const QWidget* widget) {
  QStringList names;
  for (; widget != nullptr; widget = widget->parentWidget()) {
    const QString topic = widget->property(topicProperty).toString();
    if (!topic.isEmpty()) {
      return {topic.section(u'#', 0, 0), topic.section(u'#', 1)};
    }
    const QString name = widget->objectName();
    if (widget->isWindow() && m_pages.Has(name)) {
      for (const QString& control : names) {
        if (m_pages.HasAnchor(name, control)) {
          return {name, control};
        }
      }
      return {name, {}};
    }
    names.append(name);
  }
  return {};
}

void HelpDesk::ShowWhatIsInFront() {
  const QWidget* front = InFront();
  if (front != nullptr && front->window() == m_window.get()) {
    return;
  }
  const Topic topic = TopicOf(front);
  const bool isThere = m_pages.Has(topic.page);
  Shown().ShowTopic(isThere ? topic.page : Pages::first, isThere ? topic.anchor : QString());
}

void HelpDesk::ShowMade(const QString& html) {
  Shown().Browser().ShowMade(html);
}

HelpWindow& HelpDesk::Shown() {
  if (!m_window) {
    m_window = std::make_unique<HelpWindow>(m_pages);
  }
  m_window->ShowBeside(QApplication::activeModalWidget());
  return *m_window;
}

}  // namespace host
