#pragma once

#include "documents/Export.h"
#include "documents/letter/LetterMarkers.h"
#include "documents/letter/Margins.h"

#include <QByteArray>
#include <QColor>
#include <QTextDocument>

#include <memory>
#include <vector>

class QThread;

namespace documents {

/// A letter that is filled many times: its text, its headers, footers and footnotes. What holds no marker stays byte
/// for byte.
class KELDOCUMENTOS_EXPORT LetterTemplate {
 public:
  /// Takes a letter that was read, with the margins that are kept beside it; its files say them, too.
  LetterTemplate(std::unique_ptr<QTextDocument> letter, const Margins& margins);
  ~LetterTemplate();

  /// All markers of the letter, in the order in which Filled takes their values.
  const QList<Marker>& Markers() const { return m_markers; }
  /// What looks like a marker and is none, in sentences for the user.
  const QStringList& Faults() const { return m_faults; }
  /// Whether the marker of that number stands directly behind a title.
  bool FollowsTitle(qsizetype number) const;

  /// A copy of the letter with a value for each marker, as FillMarkers puts it; `ground` is that of the text's.
  std::unique_ptr<QTextDocument> Filled(const QStringList& values, const QColor& ground = {}) const;
  /// Gives the template to another thread; called in the one that has it.
  void MoveTo(QThread* thread);

 private:
  /// A carried group with markers. It is a footnote where it has a place in the text.
  struct Carried {
    int position = -1;
    qsizetype group = 0;  ///< Which of the headers and footers.
    QByteArray bytes;
    std::unique_ptr<QTextDocument> document;
    QList<MarkerPlace> places;
  };

  void FindCarried();
  void AddCarried(int position, qsizetype group, const QByteArray& bytes);
  void FillCarried(QTextDocument& copy, const QStringList& values) const;

  std::unique_ptr<QTextDocument> m_letter;
  QList<MarkerPlace> m_places;
  QList<QByteArray> m_headers;  ///< And footers, of the first section.
  std::vector<Carried> m_carried;
  QList<Marker> m_markers;
  QStringList m_faults;
};

}  // namespace documents
