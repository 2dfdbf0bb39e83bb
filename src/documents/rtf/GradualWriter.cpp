#include "documents/rtf/GradualWriter.h"

#include "documents/rtf/Writer.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <numeric>

namespace rtf {

GradualWriter::GradualWriter(const QTextDocument& document)
    : m_document(document), m_writer(std::make_unique<Writer>(document)), m_paragraphs(document.blockCount()) {
  // A document without a layout tells nobody of its changes.
  document.documentLayout();
  QObject::connect(&document, &QTextDocument::contentsChange, &m_listener,
                   [this](int position, int /*removed*/, int added) { OnChange(position, added); });
}

GradualWriter::~GradualWriter() = default;

bool GradualWriter::Continue(std::chrono::milliseconds time) {
  const QDeadlineTimer deadline(time);
  while ((m_next = m_paragraphs.indexOf(QByteArray(), m_next)) >= 0) {
    m_paragraphs[m_next] = m_writer->WriteParagraph(m_document.findBlockByNumber(static_cast<int>(m_next)));
    if (deadline.hasExpired()) {
      return false;
    }
  }
  m_next = m_paragraphs.size();
  return true;
}

QByteArray GradualWriter::Result() const {
  QByteArray text;
  text.reserve(std::accumulate(m_paragraphs.begin(), m_paragraphs.end(), qsizetype(0),
                               [](qsizetype sum, const QByteArray& paragraph) { return sum + paragraph.size(); }));
  for (const QByteArray& paragraph : m_paragraphs) {
    text += paragraph;
  }
  return m_writer->Enclosed(text);
}

// A paragraph's end depends on what follows, its beginning on what is in front of it.
void GradualWriter::OnChange(int position, int added) {
  const QTextBlock lastBlock = m_document.findBlock(std::min(position + added, m_document.characterCount() - 1));
  const qsizetype first = m_document.findBlock(position).blockNumber();
  const qsizetype last = lastBlock.blockNumber();
  const qsizetype more = m_document.blockCount() - m_paragraphs.size();
  if (first < 0 || last < first || last - first < more) {
    m_paragraphs = QList<QByteArray>(m_document.blockCount());
    m_next = 0;
    return;
  }
  if (more > 0) {
    m_paragraphs.insert(first, more, QByteArray());
  } else if (more < 0) {
    m_paragraphs.remove(first, -more);
  }
  Forget(first - 1, last + 1);
}

void GradualWriter::Forget(qsizetype from, qsizetype to) {
  from = std::max<qsizetype>(from, 0);
  for (qsizetype i = from; i <= std::min(to, m_paragraphs.size() - 1); ++i) {
    m_paragraphs[i].clear();
  }
  m_next = std::min(m_next, from);
}

}  // namespace rtf
