#include "documents/rtf/GradualWriter.h"

#include "documents/rtf/Joint.h"
#include "documents/rtf/Writer.h"

#include <QDeadlineTimer>
#include <QTextTable>

#include <algorithm>
#include <numeric>

namespace rtf {

namespace {

const QTextFrame* OutermostTable(const QTextBlock& block) {
  const QTextFrame* outermost = nullptr;
  for (const QTextFrame* frame = QTextCursor(block).currentFrame(); frame != nullptr; frame = frame->parentFrame()) {
    outermost = qobject_cast<const QTextTable*>(frame) != nullptr ? frame : outermost;
  }
  return outermost;
}

}  // namespace

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
  while ((m_next = m_paragraphs.indexOf(std::nullopt, m_next)) >= 0) {
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
                               [](qsizetype sum, const auto& paragraph) { return sum + paragraph->size(); }));
  for (const auto& paragraph : m_paragraphs) {
    text += *paragraph;
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
    m_paragraphs = QList<std::optional<QByteArray>>(m_document.blockCount());
    m_next = 0;
    return;
  }
  if (more > 0) {
    m_paragraphs.insert(first, more, std::nullopt);
  } else if (more < 0) {
    m_paragraphs.remove(first, -more);
  }
  m_writer->Forget();
  Spread(first - 1, last + 1, more != 0);
}

// Joints are not written: what stands behind them is the next. A row that is gone changes what others of its table say.
void GradualWriter::Spread(qsizetype from, qsizetype to, bool rows) {
  const auto at = [this](qsizetype number) { return m_document.findBlockByNumber(static_cast<int>(number)); };
  while (from > 0 && IsJoint(at(from))) {
    --from;
  }
  while (to < m_document.blockCount() && IsJoint(at(to))) {
    ++to;
  }
  for (const QTextBlock& end : {at(std::max<qsizetype>(from, 0)), at(std::min(to, m_paragraphs.size() - 1))}) {
    const QTextFrame* table = rows ? OutermostTable(end) : nullptr;
    if (table != nullptr) {
      from = std::min<qsizetype>(from, m_document.findBlock(table->firstPosition()).blockNumber() - 1);
      to = std::max<qsizetype>(to, m_document.findBlock(table->lastPosition()).blockNumber() + 1);
    }
  }
  Forget(from, to);
}

void GradualWriter::Forget(qsizetype from, qsizetype to) {
  from = std::max<qsizetype>(from, 0);
  for (qsizetype i = from; i <= std::min(to, m_paragraphs.size() - 1); ++i) {
    m_paragraphs[i].reset();
  }
  m_next = std::min(m_next, from);
}

}  // namespace rtf
