#include "labels/FieldCollection.h"

#include "platform/automation/Error.h"

#include <QMetaProperty>

namespace labels {

void FieldCollection::Add(const std::shared_ptr<cCampo>& field, const QString& key) {
  if (m_keys.contains(key)) {
    throw automation::Error(automation::KeyAlreadyUsed);
  }
  m_keys.insert(key);
  m_items.push_back({key, field});
}

void FieldCollection::Remove(const QString& key) {
  if (m_keys.remove(key)) {
    std::erase_if(m_items, [&](const Item& item) { return item.key == key; });
  }
}

void FieldCollection::Clear() {
  m_items.clear();
  m_keys.clear();
}

std::shared_ptr<cCampo> CopyOf(const cCampo& field) {
  auto copy = std::make_shared<cCampo>();
  const QMetaObject* type = field.metaObject();
  for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
    type->property(i).write(copy.get(), type->property(i).read(&field));
  }
  return copy;
}

}  // namespace labels
