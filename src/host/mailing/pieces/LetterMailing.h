#pragma once

#include "documents/letter/LetterTemplate.h"
#include "documents/rtf/Report.h"
#include "host/mailing/output/PrintedWork.h"
#include "host/mailing/pieces/MailedRow.h"
#include "host/mailing/selection/Addressees.h"

#include <QDateTime>

#include <optional>

namespace host {

struct LetterWish : MailingWish {
  int letter = 0;
  int letterhead = 0;                         ///< Above the letter; 0 for none.
  QDateTime moment;                           ///< The letters' date, the same for all.
  std::optional<documents::Subject> subject;  ///< Where the letter may be for two.
  QDate from;                                 ///< See RowWish.
  QDate until;
  int year = 0;
  QString donationPeriod;  ///< What no table knows; the same for all letters.
  QString receiver;
};

/// Letters to people, made one by one from a template.
class LetterMailing : public PrintedWork {
 public:
  /// Reads everything that the letters need; the connection is not used afterwards. Raises 5, in words, where there is
  /// no such letter or selection, where the letter can't be read or has no room for text, and where its markers are
  /// of two kinds or leave open what it is for.
  LetterMailing(adodb::Connection& connection, const LetterWish& wish, int userId);

  const MailingNotes& Notes() const { return m_notes; }
  /// What of the letter can't be filled or looks wrong, in sentences: to be accepted before anything is made.
  const QStringList& Faults() const { return m_faults; }

  QString Title() const override { return m_name; }
  int Count() const override { return static_cast<int>(m_pieces.size()); }
  QString NameOf(int letter) const override;
  void Paint(int letter, PaintedPages& pages) const override;

  /// The letter, filled.
  std::unique_ptr<QTextDocument> Filled(int letter) const;

 private:
  struct Piece {
    int addressee = 0;
    MailedRow row;
  };

  void ReadTemplate(adodb::Connection& connection, const LetterWish& wish);
  void NameWhatIsNotOnPaper(const QTextDocument& letter, const rtf::Report& report);
  void ReadInstallation(adodb::Connection& connection);
  void ChooseSubject(const LetterWish& wish);
  void MakePieces(adodb::Connection& connection, const LetterWish& wish, const SavedSelection& selection);
  void AddPieces(int addressee, const QHash<int, QList<MailedRow>>& rows);
  bool MayBeJoined() const;
  QString ValueOf(qsizetype number, const Piece& piece) const;
  QString PersonValue(documents::Marker marker, const Addressee& people, bool titled) const;
  QString RowValue(documents::Marker marker, const MailedRow& row) const;

  QString m_name;
  documents::Margins m_margins;
  std::optional<documents::LetterTemplate> m_template;
  documents::Subject m_subject = documents::Subject::Person;
  bool m_velumar = false;
  bool m_namesTitles = false;
  QString m_jointHeading;
  QDateTime m_moment;
  QString m_donationPeriod;
  QString m_receiver;
  std::vector<Addressee> m_addressees;
  std::vector<Piece> m_pieces;
  MailingNotes m_notes;
  QStringList m_faults;
};

}  // namespace host
