#pragma once

#include "documents/rtf/NamedNumbers.h"
#include "documents/rtf/Parts.h"
#include "documents/rtf/Properties.h"
#include "documents/rtf/Seams.h"

#include <QCache>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QString>

#include <optional>

class QTextDocument;

namespace rtf {

/// What belongs to one document and not to its contents: the text that it was read from, to be given back while nothing
/// has changed, and the pictures, decoded when they are first shown. A child of the document, so that a clone has none.
class Source : public QObject {
  Q_OBJECT

 public:
  /// The document's source, made where it has none.
  static Source& Of(QTextDocument& document);
  static const Source* Find(const QTextDocument& document);

  /// Takes them as what the document holds now. Characters or bytes; one of them is empty. `seams` are those of the
  /// bytes, which a document that was changed is written between; none where they were not read.
  void Remember(const QTextDocument& document, const QByteArray& bytes, const QString& characters, const Seams& seams);
  /// What the document holds now stands for the same original, although other formats show it.
  void Renew(const QTextDocument& document);
  bool IsUnchanged(const QTextDocument& document) const;
  void Forget();
  /// The original, if the document is what was read: by its text and formats, not by its count of revisions, so that
  /// undoing everything counts as no change.
  std::optional<QByteArray> UnchangedBytes(const QTextDocument& document) const;
  std::optional<QString> UnchangedCharacters(const QTextDocument& document) const;
  /// What was read with the changed paragraphs in place of those that were; none where it can't be kept around them.
  /// `bytes` are the original.
  std::optional<QByteArray> Patched(const QTextDocument& document, const QByteArray& bytes) const;
  const QByteArray& Bytes() const { return m_bytes; }
  const QString& Characters() const { return m_characters; }
  /// Of the original.
  const NamedNumbers& Numbers() const;

  /// Keeps a picture's group under the name that an image format has for it, and returns the name.
  QString AddPicture(const Piece& group);
  /// Adds the pictures of another document.
  void AddPictures(const Source& other) { m_pictures.insert(other.m_pictures); }

 private:
  explicit Source(QTextDocument& document);

  const QList<Part>& PartsNow(const QTextDocument& document) const;
  QImage Picture(const QString& name);

  QByteArray m_bytes;
  QString m_characters;
  QList<Part> m_parts;
  /// What the document holds, as of one of its revisions.
  mutable QList<Part> m_now;
  mutable int m_revision = -1;
  mutable std::optional<NamedNumbers> m_numbers;
  int m_rootFormat = -1;
  Seams m_seams;
  QHash<QString, Piece> m_pictures;
  QCache<QString, QImage> m_decoded;
};

}  // namespace rtf
