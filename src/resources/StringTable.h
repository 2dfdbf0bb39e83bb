#pragma once

#include <QString>

/// The component's string table: every text that a user sees, by its number.
///
/// The table is `strings.tsv`, compiled in: one line `number<TAB>"text"` per string, sorted by number, with `""` for
/// a quotation mark. Blanks inside the quotation marks belong to the text: many texts are put together from several
/// strings. Numbers stand in blocks of 1000, one per dialog; below 1000 are the general messages.
namespace resources {

/// The text with the number `id`. Raises 326, with a text that names the number, when the table has none.
QString LoadResString(int id);

}  // namespace resources
