#pragma once

#include "documents/labels/LabelPainter.h"
#include "documents/labels/SheetPlaces.h"
#include "host/mailing/pieces/DiskLabels.h"
#include "host/mailing/pieces/LabelFields.h"
#include "host/mailing/pieces/Mailing.h"
#include "host/mailing/selection/Addressees.h"

#include <QStringList>

#include <optional>

namespace host {

/// Labels for people, on a sheet for bank disks for these, or with a letterhead for senders.
struct LabelWish : MailingWish {
  int sheet = 0;
  documents::SheetStart start;
  bool asManyAsCopies = false;  ///< As many labels as the person's subscriptions ask for copies.
  int letterhead = 0;           ///< A sender's labels; 0 for none.
  int copies = 1;               ///< So many of them.
  DiskWish disks;
};

/// Labels on sheets; a part is a sheet.
class LabelMailing : public Mailing {
 public:
  /// Reads everything that the labels need; the connection is not used afterwards. Raises 5, in words, where there is
  /// no such sheet or selection, where the sheet can't be drawn or is for something else, and for a start beyond
  /// it.
  LabelMailing(adodb::Connection& connection, const LabelWish& wish, int userId);

  const MailingNotes& Notes() const { return m_notes; }
  /// What of the sheet or of somebody's text is not right, in sentences: to be accepted before anything is made.
  const QStringList& Faults() const { return m_faults; }
  int Labels() const { return static_cast<int>(m_labels.size()); }
  /// The label, from 1, on which the last one stands.
  int LastLabel() const { return m_places->Of(Labels() - 1).label; }

  QString Title() const override { return m_name; }
  int Count() const override { return m_places->SheetsFor(Labels()); }
  QString NameOf(int sheet) const override;
  void Paint(int sheet, PaintedPages& pages) const override;
  int PartFor(int person) const override;
  QList<std::size_t> Fingerprints() const override;

  const documents::Sheet& Sheet() const { return m_sheet; }
  /// Which label of a sheet is for the person, from 1; 0 for none.
  int LabelFor(int person, int sheet) const;

 private:
  void ReadSheet(adodb::Connection& connection, const LabelWish& wish);
  int PieceFor(int person) const;
  void CheckStart(const documents::SheetStart& start);
  void AddSenders(adodb::Connection& connection, const LabelWish& wish);
  void AddDisks(adodb::Connection& connection, const LabelWish& wish);
  void AddPeople(adodb::Connection& connection, const LabelWish& wish, int userId);
  /// The people of those keys share the label; it is made so many times.
  void Add(const QString& name, const QStringList& lines, const QList<int>& keys = {}, int copies = 1);
  QStringList LinesFor(const QList<LabelField>& fields, const QStringList& values, const Addressee& people) const;
  static QStringList LinesFor(const QList<LabelField>& fields, const QStringList& values, const Addressee& people,
                              const QStringList& name);

  QString m_name;
  documents::Sheet m_sheet;
  bool m_isForDisks = false;
  std::optional<documents::SheetPlaces> m_places;
  std::optional<documents::LabelPainter> m_painter;
  std::vector<QStringList> m_labels;
  std::vector<QList<int>> m_people;  ///< Who shares each of them, by their keys.
  std::vector<int> m_firstOfSheet;   ///< The first piece of each sheet, and behind the last one.
  MailingNotes m_notes;
  QStringList m_faults;
};

}  // namespace host
