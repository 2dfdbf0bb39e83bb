#include "host/help/Pages.h"

#include "platform/text/FoldForSearch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr qsizetype mostHits = 100;
const QString ending = u".html"_s;

template <typename Use>
void ForEachFragment(const QTextBlock& block, Use use) {
  for (auto it = block.begin(); !it.atEnd(); ++it) {
    use(it.fragment());
  }
}

// The row of a table that a block stands in; the table is null outside.
std::pair<QTextTable*, int> RowOf(const QTextBlock& block) {
  QTextTable* table = QTextCursor(block).currentTable();
  return {table, table == nullptr ? 0 : table->cellAt(block.position()).row()};
}

bool HoldsAll(const QString& text, const QStringList& words) {
  return std::ranges::all_of(words, [&](const QString& word) { return text.contains(word); });
}

bool HoldsAny(const QString& text, const QStringList& words) {
  return std::ranges::any_of(words, [&](const QString& word) { return text.contains(word); });
}

}  // namespace

const QString Pages::first = u"contenido"_s;

Pages::Pages(const QString& folder) : m_folder(QDir(folder).absolutePath()) {}

QString Pages::FileOf(const QString& page) const {
  return m_folder + u'/' + page + ending;
}

bool Pages::Has(const QString& page) const {
  return !page.isEmpty() && !page.contains(u'/') && QFileInfo(FileOf(page)).isFile();
}

bool Pages::HasAnchor(const QString& page, const QString& anchor) {
  return !anchor.isEmpty() && Read(page).anchors.contains(anchor);
}

// Leaves the document empty where there is no such page.
void Pages::Load(const QString& page, QTextDocument& document) const {
  QFile file(FileOf(page));
  if (Has(page) && file.open(QIODevice::ReadOnly)) {
    document.setHtml(QString::fromUtf8(file.readAll()));
  }
}

QUrl Pages::UrlOf(const QString& page, const QString& anchor) const {
  QUrl url = QUrl::fromLocalFile(FileOf(page));
  if (!anchor.isEmpty()) {
    url.setFragment(anchor);
  }
  return url;
}

QString Pages::PageOf(const QUrl& url) const {
  const QString file = url.isLocalFile() ? QDir::cleanPath(url.toLocalFile()) : QString();
  const QFileInfo info(file);
  return info.path() == m_folder && file.endsWith(ending) ? info.completeBaseName() : QString();
}

const Pages::Content& Pages::Read(const QString& page) {
  if (const auto known = m_read.constFind(page); known != m_read.constEnd()) {
    return *known;
  }
  QTextDocument document;
  Load(page, document);
  Content& content = *m_read.insert(page, {});
  content.title = document.metaInformation(QTextDocument::DocumentTitle);
  std::pair<QTextTable*, int> lastRow;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    ForEachFragment(block, [&](const QTextFragment& fragment) {
      const QStringList names = fragment.charFormat().anchorNames();
      content.anchors.unite(QSet<QString>(names.begin(), names.end()));
    });
    const QString text = block.text().simplified();
    const auto row = std::exchange(lastRow, RowOf(block));
    if (text.isEmpty()) {
      continue;
    }
    if (lastRow.first != nullptr && row == lastRow && !content.lines.isEmpty()) {
      content.lines.last().text += u": "_s + text;
    } else {
      content.lines.append({text, block.position(), block.blockFormat().headingLevel()});
    }
  }
  for (Line& line : content.lines) {
    line.folded = texts::FoldForSearch(line.text);
  }
  return content;
}

const QList<Pages::Entry>& Pages::Contents() {
  if (!m_contents.isEmpty()) {
    return m_contents;
  }
  QTextDocument document;
  Load(first, document);
  QString group;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    if (block.blockFormat().headingLevel() > 1) {
      group = block.text();
    }
    ForEachFragment(block, [&](const QTextFragment& fragment) {
      const QUrl link = UrlOf(first).resolved(QUrl(fragment.charFormat().anchorHref()));
      if (!fragment.charFormat().anchorHref().isEmpty() && !group.isEmpty()) {
        m_contents.append({group, PageOf(link), fragment.text()});
      }
    });
  }
  return m_contents;
}

QList<Pages::Hit> Pages::Search(const QString& words) {
  const QStringList wanted = texts::FoldForSearch(words).split(u' ', Qt::SkipEmptyParts);
  if (wanted.isEmpty()) {
    return {};
  }
  enum Rank { InHeading, InLine, WithTitles, ranks };
  std::array<QList<Hit>, ranks> found;
  for (const Entry& entry : Contents()) {
    const Content& content = Read(entry.page);
    QString titles;
    for (const Line& line : content.lines) {
      if (line.heading > 0) {
        titles = (line.heading == 1 ? QString() : titles.section(u'\n', 0, line.heading - 2) + u'\n') + line.folded;
      }
      if (HoldsAny(line.folded, wanted) && HoldsAll(titles + u'\n' + line.folded, wanted)) {
        const Rank inLine = line.heading > 0 ? InHeading : InLine;
        found[HoldsAll(line.folded, wanted) ? inLine : WithTitles].append(
            {entry.page, content.title, line.text, line.position});
      }
    }
  }
  const QList<Hit> all = found[InHeading] + found[InLine] + found[WithTitles];
  return all.mid(0, mostHits);
}

}  // namespace host
