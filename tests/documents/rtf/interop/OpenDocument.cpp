#include "documents/rtf/interop/OpenDocument.h"

#include <QFile>
#include <QHash>
#include <QXmlStreamReader>

using namespace Qt::Literals::StringLiterals;

namespace interop {

namespace {

using Attributes = QMap<QString, QString>;

const QString defaultOf = u"default "_s;

class Parser {
 public:
  explicit Parser(QIODevice& file) : m_xml(&file) {}

  QList<Run> Read() {
    while (!m_xml.atEnd()) {
      m_xml.readNext();
      if (m_xml.isStartElement()) {
        Start(m_xml.qualifiedName().toString());
      } else if (m_xml.isEndElement()) {
        End(m_xml.qualifiedName().toString());
      } else if (m_xml.isCharacters() && !m_spans.isEmpty() && !m_isData) {
        Add(m_xml.text().toString());
      }
    }
    return m_runs;
  }

 private:
  QString Attribute(const QString& name) const { return m_xml.attributes().value(name).toString(); }

  void Start(const QString& name) {
    m_isData = name == u"office:binary-data";
    if (name == u"style:default-style") {
      m_style = defaultOf + Attribute(u"style:family"_s);
    } else if (name == u"style:style") {
      m_style = Attribute(u"style:name"_s);
      const QString parent = Attribute(u"style:parent-style-name"_s);
      m_styles[m_style] = m_styles.value(parent.isEmpty() ? defaultOf + Attribute(u"style:family"_s) : parent);
      if (const QString list = Attribute(u"style:list-style-name"_s); !list.isEmpty()) {
        m_styles[m_style].insert(u"list"_s, m_lists.value(list));
      }
    } else if (name == u"style:text-properties" || name == u"style:paragraph-properties") {
      for (const QXmlStreamAttribute& attribute : m_xml.attributes()) {
        m_styles[m_style].insert(attribute.qualifiedName().toString(), attribute.value().toString());
      }
    } else if (name == u"style:tab-stop") {
      m_styles[m_style][u"tabs"_s] += Attribute(u"style:position"_s) + u'/' + Attribute(u"style:type"_s) + u'/' +
                                      Attribute(u"style:leader-text"_s) + u' ';
    } else if (name == u"text:list-style") {
      m_list = Attribute(u"style:name"_s);
      m_style = u"list "_s + m_list;
    } else if (name.startsWith(u"text:list-level-style-")) {
      m_isFirstLevel = Attribute(u"text:level"_s) == u"1";
      if (m_isFirstLevel) {
        m_lists[m_list] = name.endsWith(u"bullet") ? u"bullet"_s : Attribute(u"style:num-format"_s);
      }
    } else if (name == u"style:list-level-label-alignment" && m_isFirstLevel) {
      m_indents[m_list] = {{u"fo:margin-left"_s, Attribute(u"fo:margin-left"_s)},
                           {u"fo:margin-right"_s, u"0in"_s},
                           {u"fo:text-indent"_s, Attribute(u"fo:text-indent"_s)}};
    } else if (name == u"text:list") {
      const QString style = Attribute(u"text:style-name"_s);
      m_openLists.append(m_lists.value(style, m_openLists.value(m_openLists.size() - 1)));
      m_itemIndents = m_openLists.size() == 1 ? m_indents.value(style) : Attributes();
    } else if (name == u"text:p" || name == u"text:h" || name == u"text:span" || name == u"text:a") {
      Attributes attributes = m_spans.isEmpty() ? Attributes() : m_spans.last();
      if (name == u"text:p" && m_openLists.size() == 1) {
        attributes.insert(m_itemIndents);
      }
      attributes.insert(m_styles.value(Attribute(u"text:style-name"_s)));
      if (name == u"text:a") {
        attributes.insert(u"link"_s, Attribute(u"xlink:href"_s));
      }
      if (name == u"text:p" && !m_openLists.isEmpty()) {
        attributes.insert(u"list"_s, m_openLists.last());
      }
      m_spans.append(attributes);
      if (name == u"text:p" || name == u"text:h") {
        Add(paragraphMark);
      }
    } else if (name == u"table:table-cell") {
      m_runs.append({cellMark, {}});
    } else if (!m_spans.isEmpty()) {
      Special(name);
    }
  }

  void Special(const QString& name) {
    if (name == u"text:s") {
      Add(QString(qMax(1, Attribute(u"text:c"_s).toInt()), u' '));
    } else if (name == u"text:tab") {
      Add(u"\t"_s);
    } else if (name == u"text:line-break") {
      Add(u"\n"_s);
    } else if (name == u"draw:image") {
      Add(u"@"_s);
    }
  }

  void End(const QString& name) {
    m_isData = false;
    if (name == u"text:list") {
      m_openLists.removeLast();
    } else if (name == u"text:p" || name == u"text:h" || name == u"text:span" || name == u"text:a") {
      m_spans.removeLast();
    }
  }

  void Add(const QString& text) { m_runs.append({text, m_spans.last()}); }

  QXmlStreamReader m_xml;
  QHash<QString, Attributes> m_styles;
  QHash<QString, QString> m_lists;
  /// What the items of a list's first level have unless they say otherwise.
  QHash<QString, Attributes> m_indents;
  Attributes m_itemIndents;
  bool m_isFirstLevel = false;
  bool m_isData = false;  ///< A picture's.
  QString m_style;
  QString m_list;
  QList<QString> m_openLists;
  QList<Attributes> m_spans;
  QList<Run> m_runs;
};

}  // namespace

QList<QStringList> ReadRows(const QString& path) {
  QFile file(path);
  QXmlStreamReader xml(file.open(QFile::ReadOnly) ? &file : nullptr);
  QList<QStringList> rows;
  QList<QStringList> openRows;
  QStringList openCells;
  while (!xml.atEnd()) {
    const QXmlStreamReader::TokenType token = xml.readNext();
    const QString name = xml.qualifiedName().toString();
    if (token == QXmlStreamReader::Characters && !openCells.isEmpty()) {
      openCells.last() += xml.text();
    } else if (token == QXmlStreamReader::StartElement && name == u"table:table-row") {
      openRows.append(QStringList());
    } else if (token == QXmlStreamReader::EndElement && name == u"table:table-row") {
      rows.append(openRows.takeLast());
    } else if (token == QXmlStreamReader::StartElement && name == u"table:table-cell") {
      const auto span = [&](const QString& of) { return qMax(1, xml.attributes().value(of).toInt()); };
      const int columns = span(u"table:number-columns-spanned"_s);
      const int lines = span(u"table:number-rows-spanned"_s);
      openRows.last().append(columns * lines == 1 ? QString() : u"(%1x%2)"_s.arg(columns).arg(lines));
      openCells.append(QString());
    } else if (token == QXmlStreamReader::EndElement && name == u"table:table-cell") {
      openRows.last().last().prepend(openCells.takeLast().simplified());
    } else if (token == QXmlStreamReader::EndElement && (name == u"text:p" || name == u"text:line-break") &&
               !openCells.isEmpty()) {
      openCells.last() += u' ';
    }
  }
  return rows;
}

QList<Run> ReadRuns(const QString& path) {
  QFile file(path);
  return file.open(QFile::ReadOnly) ? Parser(file).Read() : QList<Run>();
}

}  // namespace interop
