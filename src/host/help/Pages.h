#pragma once

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QUrl>

class QTextDocument;

namespace host {

/// The manual: a folder of HTML pages, of which `contenido.html` lists the others in their order. A page is known by
/// its file's name without the ending. Pages are read when they are asked for, and once.
class Pages {
 public:
  static const QString first;

  /// A page as the first one lists it, under a heading.
  struct Entry {
    QString group;
    QString page;
    QString title;
  };
  /// A line of a page: a paragraph, a heading, a row of a table.
  struct Hit {
    QString page;
    QString title;  ///< Of the page.
    QString line;
    int position = 0;  ///< In characters, of the line in the page's document.
  };

  explicit Pages(const QString& folder);

  bool Has(const QString& page) const;
  bool HasAnchor(const QString& page, const QString& anchor);
  QUrl UrlOf(const QString& page, const QString& anchor = {}) const;
  /// The page that an address means, whether it is there or not; empty for what is no page of the manual.
  QString PageOf(const QUrl& url) const;
  const QList<Entry>& Contents();
  /// Lines that hold one of the words and all of them together with the titles that they stand under, without regard to
  /// case and accents; headings first. None for no words.
  QList<Hit> Search(const QString& words);

 private:
  struct Line {
    QString text;
    int position = 0;
    int heading = 0;  ///< Level; 0 for a text.
    QString folded = {};
  };
  struct Content {
    QString title;
    QList<Line> lines;
    QSet<QString> anchors;
  };

  const Content& Read(const QString& page);
  QString FileOf(const QString& page) const;
  void Load(const QString& page, QTextDocument& document) const;

  const QString m_folder;
  QHash<QString, Content> m_read;
  QList<Entry> m_contents;
};

}  // namespace host
