#include "host/help/ShortcutsPage.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// A menu's text without the mark of its mnemonic and the points that announce a box.
QString PlainText(const QString& text) {
  QString plain = text.section(u'\t', 0, 0);
  plain.replace(u"&&"_s, u"\n"_s).remove(u'&').replace(u'\n', u'&');
  while (plain.endsWith(u'…') || plain.endsWith(u'.')) {
    plain.chop(1);
  }
  return plain.toHtmlEscaped();
}

// What the item shows behind its text: written there, or its keys.
QString KeysOf(const QAction& action) {
  const QString written = action.text().section(u'\t', 1);
  return written.isEmpty() ? action.shortcut().toString(QKeySequence::NativeText) : written;
}

QString RowsOf(const QMenu& menu) {
  QString rows;
  for (const QAction* action : menu.actions()) {
    const QString keys = KeysOf(*action);
    if (action->menu() != nullptr) {
      rows += RowsOf(*action->menu());
    } else if (!keys.isEmpty() && action->isVisible()) {
      rows += u"<tr><td>%1</td><td>%2</td></tr>"_s.arg(keys.toHtmlEscaped(), PlainText(action->text()));
    }
  }
  return rows;
}

}  // namespace

QString ShortcutsPage(const QMenuBar& menus) {
  QString page =
      u"<html><head><title>Atajos de teclado</title></head><body><h1>Atajos de teclado</h1>"
      "<p>Las teclas de los menús de la ventana principal. Las de los cuadros y las listas están en "
      "<a href=\"teclas.html\">Teclas</a>.</p>"_s;
  for (const QAction* action : menus.actions()) {
    const QString rows = action->menu() != nullptr ? RowsOf(*action->menu()) : QString();
    if (!rows.isEmpty()) {
      page += u"<h2>%1</h2><table>%2</table>"_s.arg(PlainText(action->text()), rows);
    }
  }
  return page + u"</body></html>"_s;
}

}  // namespace host
