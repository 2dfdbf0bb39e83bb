#include "host/mailing/pieces/LabelMailing.h"

#include "documents/markers/ValueText.h"
#include "documents/people/Names.h"
#include "documents/people/Posting.h"
#include "documents/people/Salutation.h"
#include "host/mailing/pieces/Letterhead.h"
#include "host/mailing/pieces/SheetUse.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using documents::LabelPart;

namespace host {

namespace {

constexpr QStringView people = u"COLABORADORES";

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

/// The copies of everybody's subscriptions, of these publications or of all.
QHash<int, int> ReadCopies(adodb::Connection& connection, const QList<int>& publications) {
  // One mistyped number must not fill a thousand sheets.
  constexpr int most = 500;
  const auto rows = adodb::Execute(
      connection, u"SELECT CodColaborador, NumeroEjemplares, CodTipoPublicacion FROM Suscripciones WHERE Eliminado=0");
  QHash<int, int> copies;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    if (publications.isEmpty() || publications.contains(automation::CLng(rows->Field(2)))) {
      int& own = copies[automation::CLng(rows->Field(0))];
      own = std::clamp(own + automation::CLng(rows->Field(1)), 0, most);
    }
  }
  return copies;
}

bool IsName(const LabelField& field) {
  return field.Is(people, u"TRATAMIENTO") || field.Is(people, u"NOMBRE") || field.Is(people, u"APELLIDO1") ||
         field.Is(people, u"APELLIDO2");
}

/// A field's value as it is printed.
QString Printed(const LabelField& field, const QString& stored, const documents::Person& person) {
  if (field.Is(u"PROVINCIAS", u"NOMBRE")) {
    return documents::PrintedProvince(person.address);
  }
  if (field.Is(u"PAISES", u"NOMBRE")) {
    return documents::PrintedCountry(person.address);
  }
  return field.Is(u"ENCABEZADOS", u"NOMBRE") ? documents::Salutation(stored, documents::GenderOf(person)) : stored;
}

LabelPart::Kind KindOf(const LabelField& field) {
  if (field.table.isEmpty()) {
    return LabelPart::Kind::Text;
  }
  return field.Is(u"PAISES", u"NOMBRE") ? LabelPart::Kind::Country : LabelPart::Kind::Field;
}

}  // namespace

LabelMailing::LabelMailing(adodb::Connection& connection, const LabelWish& wish, int userId) {
  ReadSheet(connection, wish);
  if (m_isForDisks) {
    AddDisks(connection, wish);
  } else if (wish.letterhead != 0) {
    AddSenders(connection, wish);
  } else {
    AddPeople(connection, wish, userId);
  }
  for (int piece = 0; piece < Labels(); ++piece) {
    if (m_places->Of(piece).sheet == static_cast<int>(m_firstOfSheet.size())) {
      m_firstOfSheet.push_back(piece);
    }
  }
  m_firstOfSheet.push_back(Labels());
}

void LabelMailing::AddPeople(adodb::Connection& connection, const LabelWish& wish, int userId) {
  const QList<LabelField> fields = ReadLabelFields(connection, wish.sheet, LabelsFor::People, m_faults);
  const SavedSelection selection = SelectionOf(connection, wish, userId);
  const auto addressees = AddresseesOf(ReadPeople(connection, selection, wish.order), wish, m_notes);
  const QHash<int, QStringList> values = ReadFieldValues(connection, fields);
  const QHash<int, int> copies =
      wish.asManyAsCopies ? ReadCopies(connection, selection.conditions.Of(Condition::Publication)) : QHash<int, int>();
  for (const Addressee& addressee : addressees) {
    QList<int> keys;
    int wanted = 0;
    for (const documents::Person& person : addressee) {
      keys.append(person.id);
      wanted += copies.value(person.id);
    }
    const int before = Labels();
    Add(NameInLists(addressee.constFirst()), LinesFor(fields, values.value(keys.constFirst()), addressee), keys,
        std::max(1, wanted));
    m_notes.abroad += GoesAbroad(addressee) ? Labels() - before : 0;
  }
}

void LabelMailing::AddDisks(adodb::Connection& connection, const LabelWish& wish) {
  const QList<LabelField> fields = ReadLabelFields(connection, wish.sheet, LabelsFor::Disks, m_faults);
  for (const DiskLabel& label : ReadDiskLabels(connection, fields, wish.disks)) {
    if (!label.hasIssuer) {
      m_notes.remarks.append(u"%1: su presentador no tiene ningún emisor."_s.arg(label.name));
    }
    QList<LabelPart> parts;
    for (qsizetype i = 0; i < fields.size(); ++i) {
      const QString value = documents::ValueText(label.values[i]).replace(u'\n', u' ');
      parts.append({fields[i].line, fields[i].position, LabelPart::Kind::Field, value});
    }
    Add(label.name, documents::LabelLines(parts));
  }
}

void LabelMailing::AddSenders(adodb::Connection& connection, const LabelWish& wish) {
  const QStringList lines = ReadLetterhead(connection, wish.letterhead);
  Add(lines.constFirst(), lines, {}, wish.copies);
}

void LabelMailing::Add(const QString& name, const QStringList& lines, const QList<int>& keys, int copies) {
  if (lines.isEmpty()) {
    m_notes.leftOut.append({keys.value(0), name, u"no hay nada que imprimir"_s});
    return;
  }
  if (!m_painter->ScaleOf(lines)) {
    m_faults.append(u"El texto de %1 no cabe en la etiqueta: se corta."_s.arg(name));
  }
  m_labels.insert(m_labels.end(), static_cast<std::size_t>(copies), lines);
  m_people.resize(m_labels.size(), keys);
}

void LabelMailing::ReadSheet(adodb::Connection& connection, const LabelWish& wish) {
  const auto row =
      adodb::Execute(connection, u"SELECT * FROM ETIQUETAS WHERE Eliminado=0 AND IDETIQUETA={}", wish.sheet);
  if (row->AtEnd()) {
    Refuse(u"No hay ninguna hoja de etiquetas con el número %1."_s.arg(wish.sheet));
  }
  m_name = automation::Text(row->Field(u"NOMBRE"));
  m_isForDisks = automation::CBool(row->Field(u"DISCO"));
  const bool wantsDisks = wish.selection.isEmpty() && !wish.chosen && wish.letterhead == 0;
  if (m_isForDisks != wantsDisks) {
    Refuse(m_isForDisks
               ? u"La hoja «%1» es de discos bancarios. Elija otra."_s.arg(m_name)
               : u"La hoja «%1» no es de discos bancarios. Elija otra, o diga a quién se escribe."_s.arg(m_name));
  }
  const std::optional<documents::Sheet> sheet = documents::ReadSheet(*row);
  if (!sheet) {
    Refuse(u"Las medidas de la hoja «%1» no sirven. Corríjalas."_s.arg(m_name));
  }
  m_sheet = *sheet;
  if (!Fits(m_sheet, documents::UsualPaper())) {
    m_faults.append(u"Las etiquetas de la hoja «%1» se salen del papel."_s.arg(m_name));
  }
  CheckStart(wish.start);
  m_places.emplace(m_sheet, wish.start);
  m_painter.emplace(m_sheet, ReadLabelFont(connection, wish.sheet));
}

void LabelMailing::CheckStart(const documents::SheetStart& start) {
  QList<int> labels = start.skipped.values();
  labels.append(start.first);
  for (const int label : labels) {
    if (label < 1 || label > m_sheet.totals) {
      Refuse(u"La hoja «%1» no tiene etiqueta %2: tiene %3."_s.arg(m_name, QString::number(label),
                                                                   QString::number(m_sheet.totals)));
    }
  }
}

QStringList LabelMailing::LinesFor(const QList<LabelField>& fields, const QStringList& values,
                                   const Addressee& addressee) const {
  const QStringList lines = LinesFor(fields, values, addressee, documents::JointName(addressee));
  return m_painter->ScaleOf(lines) ? lines : LinesFor(fields, values, addressee, documents::NarrowJointName(addressee));
}

QStringList LabelMailing::LinesFor(const QList<LabelField>& fields, const QStringList& values,
                                   const Addressee& addressee, const QStringList& name) {
  const documents::Person& first = addressee.constFirst();
  bool named = false;
  QList<LabelPart> parts;
  for (qsizetype i = 0; i < fields.size(); ++i) {
    const LabelField& field = fields[i];
    QString value = field.table.isEmpty() ? field.text : Printed(field, values.value(i), first);
    value = documents::ValueText(value).replace(u'\n', u' ');
    // Who shares a label is named once, where the first name stands.
    if (addressee.size() > 1 && IsName(field)) {
      value = named ? QString() : name.join(u'\n');
      named = true;
    }
    parts.append({field.line, field.position, KindOf(field), value});
  }
  return documents::LabelLines(parts);
}

QString LabelMailing::NameOf(int sheet) const {
  return u"%1 (%2)"_s.arg(m_name, QString::number(sheet + 1));
}

int LabelMailing::PieceFor(int person) const {
  const auto found = std::ranges::find_if(m_people, [&](const QList<int>& keys) { return keys.contains(person); });
  return found == m_people.end() ? -1 : static_cast<int>(found - m_people.begin());
}

int LabelMailing::PartFor(int person) const {
  const int piece = PieceFor(person);
  return piece < 0 ? -1 : m_places->Of(piece).sheet;
}

int LabelMailing::LabelFor(int person, int sheet) const {
  const int piece = PieceFor(person);
  return piece < 0 || m_places->Of(piece).sheet != sheet ? 0 : m_places->Of(piece).label;
}

QList<std::size_t> LabelMailing::Fingerprints() const {
  QList<std::size_t> fingerprints;
  for (std::size_t piece = 0; piece < m_labels.size(); ++piece) {
    fingerprints.append(qHashMulti(0, m_people[piece], m_labels[piece]));
  }
  return fingerprints;
}

void LabelMailing::Paint(int sheet, PaintedPages& pages) const {
  QPainter& painter = pages.Next();
  const auto at = static_cast<std::size_t>(sheet);
  for (int piece = m_firstOfSheet[at]; piece < m_firstOfSheet[at + 1]; ++piece) {
    m_painter->Paint(painter, m_places->Of(piece).label, m_labels[static_cast<std::size_t>(piece)]);
  }
}

}  // namespace host
