#pragma once

#include "labels/FieldCollection.h"

/// What the field dialog does with its working list: a private copy of the sheet's fields, each under its identifier.
namespace labels {

/// Lines of a label and positions in a line that the field dialog offers.
inline constexpr int mostLines = 5;
inline constexpr int mostPositions = 5;

/// An entry as the dialog's controls say it.
struct EntryInput {
  bool isField = true;  ///< False for a free text.
  qint32 table = 0;
  qint32 field = 0;
  QString value = {};  ///< The field's name, or the text.
  quint8 line = 0;
  quint8 position = 0;
};

/// True for an entry that waits for its deletion: it is neither shown nor counted.
bool IsDeleted(const cCampo& entry);

/// Copies every field of `from` into the emptied `to`, under its identifier. Raises 457 when two fields have the same.
void CopyFields(const FieldCollection& from, FieldCollection& to);

/// The identifier of the next entry that is not stored: one below the smallest of those not above 0.
qint32 NextTemporaryId(const FieldCollection& list);

/// True when an entry other than `except` stands at that line and position.
bool IsPlaceTaken(const FieldCollection& list, quint8 line, quint8 position, qint32 except);

/// Adds a new entry, and returns it.
std::shared_ptr<cCampo> AddEntry(FieldCollection& list, const EntryInput& input);
void ModifyEntry(cCampo& entry, const EntryInput& input);
/// Marks a stored entry for deletion, and removes one that is not stored.
void DeleteEntry(FieldCollection& list, const std::shared_ptr<cCampo>& entry);

}  // namespace labels
