#include "host/desktop/Strips.h"

#include <QAccessible>
#include <QVBoxLayout>

namespace host {

namespace {

// More would leave no room for the list.
constexpr int mostThatMayGo = 3;

}  // namespace

Strips::Strips(QWidget* parent) : QWidget(parent), m_column(new QVBoxLayout(this)) {
  m_column->setContentsMargins({});
  m_column->setSpacing(1);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  hide();
}

void Strips::Tell(const StripText& content) {
  QList<Strip*> passing;
  for (Strip* shown : Shown()) {
    if (shown->objectName() == content.subject) {
      Remove(shown);
    } else if (shown->MayGo()) {
      passing.append(shown);
    }
  }
  if (passing.size() >= mostThatMayGo && !content.ways.isEmpty()) {
    Remove(passing.constFirst());
  }
  auto* strip = new Strip(content, this);
  connect(strip, &Strip::Left, this, [this, strip] {
    m_column->removeWidget(strip);
    setVisible(!Shown().isEmpty());
    Q_EMIT Left();
  });
  m_column->addWidget(strip);
  strip->show();
  show();
  QAccessibleEvent told(strip, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

void Strips::Withdraw(const QString& subject) {
  for (Strip* shown : Shown()) {
    if (shown->objectName() == subject) {
      Remove(shown);
    }
  }
  setVisible(!Shown().isEmpty());
}

void Strips::Remove(Strip* strip) {
  m_column->removeWidget(strip);
  strip->hide();
  strip->deleteLater();
}

QList<Strip*> Strips::Shown() const {
  QList<Strip*> shown;
  for (int place = 0; place < m_column->count(); ++place) {
    shown.append(static_cast<Strip*>(m_column->itemAt(place)->widget()));
  }
  return shown;
}

}  // namespace host
