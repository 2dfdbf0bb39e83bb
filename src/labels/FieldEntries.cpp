#include "labels/FieldEntries.h"

#include "platform/contract/cConstAccion.h"

#include <algorithm>

namespace labels {

namespace {

constexpr cConstAccion action;

QString KeyOf(const cCampo& entry) {
  return QString::number(entry.IDElemento);
}

void Fill(cCampo& entry, const EntryInput& input) {
  entry.UsarCampo = input.isField;
  entry.codTabla = input.isField ? input.table : 0;
  entry.IDCampo = input.isField ? input.field : 0;
  entry.Campo = input.value;
  entry.Linea = input.line;
  entry.Orden = input.position;
}

}  // namespace

bool IsDeleted(const cCampo& entry) {
  return entry.Estado == action.Eliminar();
}

void CopyFields(const FieldCollection& from, FieldCollection& to) {
  to.Clear();
  for (const auto& [key, field] : from) {
    to.Add(CopyOf(*field), KeyOf(*field));
  }
}

qint32 NextTemporaryId(const FieldCollection& list) {
  qint32 smallest = 0;
  for (const auto& [key, entry] : list) {
    smallest = std::min(smallest, entry->IDElemento);
  }
  return smallest - 1;
}

bool IsPlaceTaken(const FieldCollection& list, quint8 line, quint8 position, qint32 except) {
  return std::ranges::any_of(list, [&](const FieldCollection::Item& item) {
    const cCampo& entry = *item.field;
    return !IsDeleted(entry) && entry.IDElemento != except && entry.Linea == line && entry.Orden == position;
  });
}

std::shared_ptr<cCampo> AddEntry(FieldCollection& list, const EntryInput& input) {
  auto entry = std::make_shared<cCampo>();
  entry->IDElemento = NextTemporaryId(list);
  Fill(*entry, input);
  list.Add(entry, KeyOf(*entry));
  return entry;
}

void ModifyEntry(cCampo& entry, const EntryInput& input) {
  Fill(entry, input);
  // Also for an entry that is not stored yet: the writer ignores it there.
  entry.Estado = action.Modificar();
}

void DeleteEntry(FieldCollection& list, const std::shared_ptr<cCampo>& entry) {
  if (entry->ExisteEnBD) {
    entry->Estado = action.Eliminar();
  } else {
    list.Remove(KeyOf(*entry));
  }
}

}  // namespace labels
