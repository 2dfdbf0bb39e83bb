#include "host/help/HelpBrowser.h"

#include "host/look/Colours.h"

#include <QEvent>
#include <QScrollBar>
#include <QTextBlock>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr double markShare = 0.3;
constexpr int margin = 18;

const QString missing =
    u"<h1>Falta esta página</h1><p>El manual no está completo. Compruebe la instalación del programa.</p>"_s;

// Pages have no colours and sizes of their own: those of the window hold, light or dark.
const QString pageStyle =
    u"h1, h2, h3 { font-weight: bold; } th { text-align: left; } th, td { padding: 3px 18px 3px 0px; }"_s;

}  // namespace

const QString HelpBrowser::made = u"atajos"_s;

HelpBrowser::HelpBrowser(Pages& pages, QWidget* parent) : QTextBrowser(parent), m_pages(pages) {
  setOpenLinks(false);
  document()->setDefaultStyleSheet(pageStyle);
  document()->setDocumentMargin(margin);
  connect(this, &QTextBrowser::anchorClicked, this, &HelpBrowser::Follow);
}

QString HelpBrowser::Page() const {
  return m_pages.PageOf(source());
}

void HelpBrowser::ShowPage(const QString& page, const QString& anchor) {
  const QUrl url = m_pages.UrlOf(page, anchor);
  if (url != source()) {
    setSource(url);
  }
  scrollToAnchor(anchor);
  Mark(PositionOf(anchor));
}

void HelpBrowser::ShowLine(const QString& page, int position) {
  ShowPage(page);
  QTextCursor cursor(document());
  cursor.setPosition(qBound(0, position, document()->characterCount() - 1));
  setTextCursor(cursor);
  verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect(cursor).top() - margin);
  Mark(cursor.position());
}

void HelpBrowser::ShowMade(const QString& html) {
  m_made = html;
  if (Page() == made) {
    reload();
  } else {
    ShowPage(made);
  }
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name) {
  const QString page = m_pages.PageOf(source().resolved(name));
  if (type != QTextDocument::HtmlResource) {
    return QTextBrowser::loadResource(type, name);
  }
  if (page == made) {
    return m_made;
  }
  return m_pages.Has(page) ? QTextBrowser::loadResource(type, name) : QVariant(missing);
}

void HelpBrowser::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  // Links take their colour when a page is read.
  if (event->type() == QEvent::PaletteChange && !source().isEmpty()) {
    reload();
  }
}

void HelpBrowser::Follow(const QUrl& url) {
  const QUrl target = source().resolved(url);
  const QString page = m_pages.PageOf(target);
  if (page.isEmpty()) {
    Q_EMIT LedOutside(target);
  } else {
    ShowPage(page, target.fragment());
  }
}

void HelpBrowser::Mark(int position) {
  QList<ExtraSelection> marks;
  if (position >= 0) {
    ExtraSelection mark;
    mark.cursor = QTextCursor(document()->findBlock(position));
    mark.cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    mark.format.setBackground(Mix(palette().color(QPalette::Highlight), palette().color(QPalette::Base), markShare));
    marks.append(mark);
  }
  setExtraSelections(marks);
}

int HelpBrowser::PositionOf(const QString& anchor) const {
  for (QTextBlock block = document()->begin(); block.isValid() && !anchor.isEmpty(); block = block.next()) {
    for (auto it = block.begin(); !it.atEnd(); ++it) {
      if (it.fragment().charFormat().anchorNames().contains(anchor)) {
        return it.fragment().position();
      }
    }
  }
  return -1;
}

}  // namespace host
