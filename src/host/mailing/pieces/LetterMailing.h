#pragma once

#include "documents/letter/LetterTemplate.h"
#include "documents/rtf/Report.h"
#include "host/mailing/pieces/MailedRow.h"
#include "host/mailing/pieces/Mailing.h"
#include "host/mailing/selection/Addressees.h"

#include <QDateTime>

#include <optional>

namespace host {

struct LetterWish : MailingWish {
  int letter = 0;
  int letterhead = 0;                         ///< Above the letter; 0 for none.
  QDateTime moment;                           ///< The letters' date, the same for all.
  std::optional<documents::Subject> subject;  ///< Where the letter may be for two.
  std::optional<documents::Subject> usually;  ///< That one where `subject` does not say; passed over in other letters.
  QDate from;                                 ///< See RowWish.
  QDate until;
  int year = 0;
  QString donationPeriod;  ///< What no table knows; the same for all letters.
  QString receiver;
};

/// Letters to people, made one by one from a template.
class LetterMailing : public Mailing {
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

  int PartFor(int person) const override;
  QList<std::size_t> Fingerprints() const override;

  /// The letter, filled; values on a ground of that colour where it is valid.
  std::unique_ptr<QTextDocument> Filled(int letter, const QColor& ground = {}) const;
  /// Who gets the letter.
  const Addressee& PeopleOf(int letter) const;
  const documents::Margins& Margins() const { return m_margins; }
  const QList<documents::Marker>& Markers() const { return m_template->Markers(); }
  documents::Subject About() const { return m_subject; }
  /// What the letter may be for.
  const QList<documents::Subject>& Subjects() const { return m_subjects; }
  /// Whether one letter can be for several people.
  bool MayBeJoined() const;
  /// For who goes on with the mailing in another thread than the one that read it.
  void MoveTo(QThread* thread) { m_template->MoveTo(thread); }

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
  QStringList ValuesFor(const Piece& piece) const;
  QString ValueOf(qsizetype number, const Piece& piece) const;
  QString PersonValue(documents::Marker marker, const Addressee& people, bool titled) const;
  QString RowValue(documents::Marker marker, const MailedRow& row) const;

  QString m_name;
  documents::Margins m_margins;
  std::optional<documents::LetterTemplate> m_template;
  documents::Subject m_subject = documents::Subject::Person;
  QList<documents::Subject> m_subjects;
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
