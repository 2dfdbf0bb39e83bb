#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <vector>

/// Closes every message box that opens while it lives and remembers what it said.
class MessageCatcher {
 public:
  struct Message {
    QString title;
    QString text;
    QMessageBox::Icon icon;
    Qt::TextFormat format;
  };

  MessageCatcher() {
    QObject::connect(&m_timer, &QTimer::timeout, [this] { Answer(); });
    m_timer.start(0);
  }

  const std::vector<Message>& Messages() const { return m_messages; }

 private:
  void Answer() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box != nullptr && box->isVisible()) {
      m_messages.push_back({box->windowTitle(), box->text(), box->icon(), box->textFormat()});
      box->button(QMessageBox::Ok)->click();
    }
  }

  QTimer m_timer;
  std::vector<Message> m_messages;
};
