#pragma once

#include "documents/labels/LabelPainter.h"
#include "documents/labels/SheetPlaces.h"
#include "host/mailing/output/PrintedWork.h"
#include "host/mailing/pieces/LabelFields.h"
#include "host/mailing/selection/Addressees.h"

#include <QStringList>

#include <optional>

namespace host {

struct LabelWish : MailingWish {
  int sheet = 0;
  documents::SheetStart start;
  bool asManyAsCopies = false;  ///< As many labels as the person's subscriptions ask for copies.
};

/// Labels for people on sheets; a part is a sheet.
class LabelMailing : public PrintedWork {
 public:
  /// Reads everything that the labels need; the connection is not used afterwards. Raises 5, in words, where there is
  /// no such sheet or selection, where the sheet is for bank disks or can't be drawn, and for a start beyond it.
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
  QStringList LinesFor(const QList<LabelField>& fields, const QStringList& values, const Addressee& people) const;
  static QStringList LinesFor(const QList<LabelField>& fields, const QStringList& values, const Addressee& people,
                              const QStringList& name);

  QString m_name;
  documents::Sheet m_sheet;
  std::optional<documents::SheetPlaces> m_places;
  std::optional<documents::LabelPainter> m_painter;
  std::vector<QStringList> m_labels;
  std::vector<QList<int>> m_people;  ///< Who shares each of them, by their keys.
  std::vector<int> m_firstOfSheet;   ///< The first piece of each sheet, and behind the last one.
  MailingNotes m_notes;
  QStringList m_faults;
};

}  // namespace host
