#include "BoxAnswers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPushButton>

using namespace Qt::StringLiterals;

BoxAnswers::BoxAnswers(QList<QMessageBox::StandardButton> answers) : m_answers(std::move(answers)) {
  QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Look(); });
  m_timer.start(1);
}

void BoxAnswers::Look() {
  auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  if (box == nullptr) {
    return;
  }
  m_texts.append(box->text() + u" | "_s + box->informativeText());
  QAbstractButton* button = m_answers.isEmpty() ? nullptr : box->button(m_answers.takeFirst());
  if (button == nullptr) {
    button = box->defaultButton();
  }
  if (button == nullptr) {
    button = box->buttons().constFirst();
  }
  button->click();
}
