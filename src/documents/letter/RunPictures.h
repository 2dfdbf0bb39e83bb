#pragma once

class QTextDocument;

namespace documents {

/// Decodes the pictures of a letter that is printed many times: each once, no finer than 600 dots per inch of its
/// printed size, and kept as long as the letter. A file that is painted from copies of the letter then holds each once.
/// Copies take the letter's resource provider.
void KeepPictures(QTextDocument& letter);

}  // namespace documents
