#pragma once

#include "documents/Export.h"
#include "documents/letter/Margins.h"
#include "documents/letter/SectionStrip.h"

#include <QStringList>

#include <array>
#include <memory>

class QPainter;
class QTextDocument;

namespace documents {

/// The headers and footers of a letter's first section, on the pages that they are for: the first page's where it has
/// its own (`\titlepg`), left and right pages' where these differ (`\facingp`). The letter keeps them as they are.
/// Source: Rich Text Format Specification 1.9.1, "Section Text" and "Headers and Footers".
class KELDOCUMENTOS_EXPORT LetterStrips {
 public:
  LetterStrips(const QTextDocument& letter, const Margins& margins, const Paper& paper = UsualPaper());
  ~LetterStrips();

  bool IsEmpty() const;
  /// Lays them out for other margins.
  void SetMargins(const Margins& margins);
  /// Paints those of a page, from 0, on a painter whose unit is the half-point and whose origin is the upper left
  /// corner of a paper that is `height` half-points high.
  void Paint(QPainter& painter, int page, int pages, double height) const;
  /// What will not be on paper as the letter has it, in Spanish, a sentence each.
  QStringList Problems() const;

 private:
  /// In the order of the control words below.
  enum Kind { Header, HeaderFirst, HeaderLeft, HeaderRight, Footer, FooterFirst, FooterLeft, FooterRight };
  static constexpr int kinds = FooterRight + 1;

  void ReadGroups(const QTextDocument& letter);
  SectionStrip* StripOf(int page, bool footer) const;
  QStringList MissingFonts() const;
  double HeaderRoom() const;
  double FooterRoom() const;

  std::array<std::unique_ptr<SectionStrip>, kinds> m_strips;
  Margins m_margins;
  Paper m_paper;
  bool m_firstDiffers = false;
  bool m_sidesDiffer = false;
  bool m_othersFollow = false;  ///< Later sections have their own, which are not shown.
  int m_firstNumber = 1;
  Twips m_headerPlace{720};
  Twips m_footerPlace{720};
};

}  // namespace documents
