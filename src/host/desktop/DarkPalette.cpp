#include "host/desktop/DarkPalette.h"

#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QStyleFactory>

using namespace Qt::StringLiterals;

namespace host {

void UseDarkPalette() {
  const QColor window(45, 45, 48);
  const QColor base(30, 30, 30);
  const QColor text(230, 230, 230);
  const QColor dimmed(140, 140, 140);
  QPalette palette(window);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, QColor(38, 38, 40));
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::PlaceholderText, dimmed);
  palette.setColor(QPalette::Button, window);
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::ToolTipBase, base);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::Highlight, QColor(47, 111, 143));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(120, 180, 230));
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, dimmed);
  }
  // Styles of a desktop may keep their own colours; this one takes all of the palette.
  QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
  QApplication::setPalette(palette);
}

}  // namespace host
