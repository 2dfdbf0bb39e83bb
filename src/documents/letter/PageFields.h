#pragma once

#include <functional>

class QTextDocument;

namespace documents {

/// Writes into the fields that show the number of their page, or how many pages there are, what `pageOf` (from 0, by a
/// position of the text) and `count` say; again, if that was done before. For a copy that is painted: the letter itself
/// keeps the numbers that it has.
/// Source: Rich Text Format Specification 1.9.1, "Fields", and the field codes PAGE and NUMPAGES.
void FillPageFields(QTextDocument& pages, const std::function<int(int position)>& pageOf, int count);

}  // namespace documents
