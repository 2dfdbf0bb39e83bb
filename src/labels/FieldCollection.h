#pragma once

#include "labels/cCampo.h"

#include <QSet>
#include <QString>

#include <memory>
#include <vector>

namespace labels {

/// The fields of a label, each under a key, in the order in which they were added. Collections share their fields; a
/// copy of a field is made with CopyOf.
class FieldCollection {
 public:
  struct Item {
    QString key;
    std::shared_ptr<cCampo> field;
  };

  /// Raises 457 for a key that is taken.
  void Add(const std::shared_ptr<cCampo>& field, const QString& key);
  /// Nothing for a key that is not there.
  void Remove(const QString& key);
  void Clear();

  bool IsEmpty() const { return m_items.empty(); }
  std::size_t Count() const { return m_items.size(); }
  auto begin() const { return m_items.begin(); }
  auto end() const { return m_items.end(); }

 private:
  std::vector<Item> m_items;
  QSet<QString> m_keys;
};

/// A new field with all properties of another one.
std::shared_ptr<cCampo> CopyOf(const cCampo& field);

}  // namespace labels
