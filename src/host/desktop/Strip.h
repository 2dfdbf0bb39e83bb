#pragma once

#include "host/look/Palettes.h"

#include <QFrame>
#include <QList>
#include <QString>

#include <functional>

class QKeyEvent;

namespace host {

/// What a strip tells, and the ways out that it offers.
struct StripText {
  struct Way {
    QString text;  ///< Of the button, with its `&`.
    std::function<void()> act = {};
    bool stays = false;  ///< The strip does not go with it.
  };

  QString subject;  ///< What it is about; the name of the strip.
  QString text;     ///< Plain text of any length.
  QList<Way> ways = {};
  StripTone tone = StripTone::News;
  bool stays = false;  ///< Only its ways take it away: neither Escape nor newer strips.
};

/// A line that tells something and makes nobody wait, as a box does. It goes when one of its ways is chosen, or with
/// Escape while the focus is in it; without a way it stays. Screen readers are told of it when it appears.
class Strip : public QFrame {
  Q_OBJECT

 public:
  explicit Strip(const StripText& content, QWidget* parent = nullptr);

  bool MayGo() const { return m_mayGo; }

 Q_SIGNALS:
  /// It went by the user's will; what the chosen way does follows.
  void Left();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Leave();

  bool m_mayGo;
};

}  // namespace host
