#include "host/mailing/window/PeopleModel.h"

#include "host/look/Colours.h"
#include "platform/text/FoldForSearch.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Stands out of light and dark grounds.
QColor Warning() {
  return IsDark(QGuiApplication::palette()) ? QColor(0xF0, 0xB4, 0x5A) : QColor(0x9A, 0x55, 0x00);
}

}  // namespace

void PeopleModel::SetPeople(std::vector<ListedPerson> people, const SavedSelection& selection) {
  beginResetModel();
  m_people = std::move(people);
  m_selection = selection;
  m_reasons.clear();
  Arrange();
  endResetModel();
}

void PeopleModel::SetSearch(const QString& typed) {
  beginResetModel();
  m_search = RecordFilter(typed);
  Arrange();
  endResetModel();
}

void PeopleModel::SetFilter(PeopleFilter filter) {
  beginResetModel();
  m_filter = filter;
  Arrange();
  endResetModel();
}

void PeopleModel::SetReasons(QHash<int, QString> reasons) {
  if (reasons == m_reasons) {
    return;
  }
  m_reasons = std::move(reasons);
  if (m_filter == PeopleFilter::LeftOut) {
    SetFilter(m_filter);
  } else if (rowCount() > 0) {
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, Remark));
  }
}

void PeopleModel::SetSelection(const SavedSelection& selection) {
  m_selection = selection;
  if (rowCount() > 0) {
    Q_EMIT dataChanged(index(0, Name), index(rowCount() - 1, Name), {Qt::CheckStateRole});
  }
}

bool PeopleModel::Passes(const ListedPerson& person) const {
  switch (m_filter) {
    case PeopleFilter::Ticked:
      return m_selection.Takes(person.id);
    case PeopleFilter::WithoutAddress:
      return !person.missing.isEmpty();
    case PeopleFilter::Sharing:
      return person.shares;
    case PeopleFilter::Doubtful:
      return !person.doubt.isEmpty();
    case PeopleFilter::Abroad:
      return person.isAbroad;
    case PeopleFilter::LeftOut:
      return m_reasons.contains(person.id);
    default:
      return true;
  }
}

void PeopleModel::Arrange() {
  m_shown.clear();
  for (int place = 0; place < Total(); ++place) {
    const ListedPerson& person = m_people[static_cast<std::size_t>(place)];
    if (Passes(person) && m_search.Accepts(person.folded)) {
      m_shown.push_back(place);
    }
  }
}

int PeopleModel::TickedCount() const {
  return static_cast<int>(
      std::ranges::count_if(m_people, [this](const ListedPerson& person) { return m_selection.Takes(person.id); }));
}

int PeopleModel::RowOf(int person) const {
  const auto found =
      std::ranges::find_if(m_shown, [&](int place) { return m_people[static_cast<std::size_t>(place)].id == person; });
  return found == m_shown.end() ? -1 : static_cast<int>(found - m_shown.begin());
}

int PeopleModel::Find(const QString& typed, int from) const {
  const QString wanted = texts::FoldForSearch(typed);
  for (int i = 0; i < rowCount(); ++i) {
    const int row = (from + i) % rowCount();
    if (At(row).folded.startsWith(wanted)) {
      return row;
    }
  }
  return -1;
}

int PeopleModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int PeopleModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ColumnCount;
}

QString PeopleModel::RemarkOf(const ListedPerson& person) const {
  if (m_reasons.contains(person.id)) {
    return m_reasons[person.id];
  }
  if (!person.missing.isEmpty()) {
    return person.missing;
  }
  if (!person.doubt.isEmpty()) {
    return person.doubt;
  }
  return person.shares ? u"comparten"_s : QString();
}

QVariant PeopleModel::TextOf(const ListedPerson& person, int column) const {
  switch (column) {
    case Name:
      return person.name.isEmpty() ? u"Sin nombre"_s : person.name;
    case Postcode:
      return person.postcode;
    case Town:
      return person.town;
    default:
      return RemarkOf(person);
  }
}

QVariant PeopleModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const ListedPerson& person = At(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return TextOf(person, index.column());
    case Qt::CheckStateRole:
      return index.column() == Name ? QVariant(m_selection.Takes(person.id) ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::ForegroundRole:
      return m_reasons.contains(person.id) || !person.missing.isEmpty() ? QVariant(Warning()) : QVariant();
    case Qt::AccessibleTextRole:
      return index.column() == Name
                 ? QVariant(u"%1, %2, %3, %4"_s.arg(person.name, person.postcode, person.town, RemarkOf(person)))
                 : TextOf(person, index.column());
    default:
      return {};
  }
}

QVariant PeopleModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
    return {};
  }
  return QStringList{u"Nombre"_s, u"C.P."_s, u"Población"_s, u"Observación"_s}.value(section);
}

Qt::ItemFlags PeopleModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.column() == Name ? flags | Qt::ItemIsUserCheckable : flags;
}

bool PeopleModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !index.isValid()) {
    return false;
  }
  Q_EMIT Ticked(At(index.row()).id, value.toInt() == Qt::Checked);
  return true;
}

}  // namespace host
