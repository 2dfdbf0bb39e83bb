#pragma once

#include "host/desktop/Strip.h"

#include <QWidget>

class QVBoxLayout;

namespace host {

/// The strips above the list, the newest at the bottom.
class Strips : public QWidget {
  Q_OBJECT

 public:
  explicit Strips(QWidget* parent = nullptr);

  /// Shows a strip; it takes the place of one about the same subject. Of those that may go a few are kept, and the
  /// oldest leaves for a further one.
  void Tell(const StripText& content);
  /// Takes the strip of that subject away, if it is there.
  void Withdraw(const QString& subject);

 Q_SIGNALS:
  /// A strip went by the user's will: the focus wants another place.
  void Left();

 private:
  void Remove(Strip* strip);
  QList<Strip*> Shown() const;

  QVBoxLayout* m_column;
};

}  // namespace host
