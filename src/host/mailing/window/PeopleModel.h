#pragma once

#include "host/mailing/selection/PeopleList.h"
#include "host/records/RecordFilter.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QString>

#include <vector>

namespace host {

/// Which people the list shows.
enum class PeopleFilter { All, Ticked, WithoutAddress, Sharing, Doubtful, Abroad, LeftOut };

/// The people of a selection with their boxes, those that search and filter let through.
class PeopleModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Name, Postcode, Town, Remark, ColumnCount };

  using QAbstractTableModel::QAbstractTableModel;

  /// Replaces the people; search and filter are kept.
  void SetPeople(std::vector<ListedPerson> people, const SavedSelection& selection);
  void SetSearch(const QString& typed);
  void SetFilter(PeopleFilter filter);
  /// Why somebody who is ticked gets nothing, by the person's key.
  void SetReasons(QHash<int, QString> reasons);
  /// Whose boxes are ticked, after a change of the selection that keeps its people.
  void SetSelection(const SavedSelection& selection);

  int Total() const { return static_cast<int>(m_people.size()); }
  int TickedCount() const;
  int PersonAt(int row) const { return At(row).id; }
  /// -1 for somebody who is not shown.
  int RowOf(int person) const;
  /// The first row from `from` on, then from the top, whose name begins so, without regard to case and accents; -1 for
  /// none.
  int Find(const QString& typed, int from) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 Q_SIGNALS:
  /// The user ticked a box, or took a tick away.
  void Ticked(int person, bool taken);

 private:
  const ListedPerson& At(int row) const {
    return m_people[static_cast<std::size_t>(m_shown[static_cast<std::size_t>(row)])];
  }
  bool Passes(const ListedPerson& person) const;
  QString RemarkOf(const ListedPerson& person) const;
  QVariant TextOf(const ListedPerson& person, int column) const;
  void Arrange();

  std::vector<ListedPerson> m_people;
  std::vector<int> m_shown;  ///< Places in m_people.
  SavedSelection m_selection;
  QHash<int, QString> m_reasons;
  RecordFilter m_search;
  PeopleFilter m_filter = PeopleFilter::All;
};

}  // namespace host
