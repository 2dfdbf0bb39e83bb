#pragma once

#include "documents/Export.h"

#include <QByteArray>
#include <QList>
#include <QObject>

#include <chrono>
#include <memory>
#include <optional>

class QTextDocument;

namespace rtf {

class Writer;

/// Writes a document in steps while it is being edited, for copies that are kept meanwhile. What was written of a
/// paragraph counts until that paragraph or a neighbour changes, so that each writing after the first costs what was
/// typed since, and somebody who never pauses can't keep it from its end. The result says what Write's says; since
/// each of its paragraphs begins from nothing, a field over several becomes one in each.
class KELDOCUMENTOS_EXPORT GradualWriter {
 public:
  /// The document outlives this object and is not replaced by another reading.
  explicit GradualWriter(const QTextDocument& document);
  GradualWriter(const GradualWriter&) = delete;
  GradualWriter& operator=(const GradualWriter&) = delete;
  ~GradualWriter();

  /// Goes on for about that long, a paragraph at least. True when everything is written.
  bool Continue(std::chrono::milliseconds time);
  /// The document as it is now, as RTF in ASCII except for what is carried byte for byte. Only after Continue gave
  /// true.
  QByteArray Result() const;

 private:
  void OnChange(int position, int added);
  void Spread(qsizetype from, qsizetype to, bool rows);
  void Forget(qsizetype from, qsizetype to);

  const QTextDocument& m_document;
  std::unique_ptr<Writer> m_writer;
  /// One for each paragraph, none where it is to be written.
  QList<std::optional<QByteArray>> m_paragraphs;
  /// No paragraph before this one is to be written.
  qsizetype m_next = 0;
  /// Whose connections to the document end with this object.
  QObject m_listener;
};

}  // namespace rtf
