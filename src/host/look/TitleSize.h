#pragma once

#include <QFont>
#include <QObject>
#include <QWidget>

namespace host {

/// The font so many times as large, whether the desktop gives its size in points or in pixels.
QFont Enlarged(QFont font, double times);

/// Makes a title bold and so many times as large as the texts of the widget around it, whatever size these get later.
class TitleSize : public QObject {
  Q_OBJECT

 public:
  /// Belongs to the title, which has a parent.
  TitleSize(QWidget& title, double times);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Dress(const QWidget& around);

  QWidget& m_title;
  double m_times;
};

}  // namespace host
