// Any bytes: unchanged they come back as they were, and what is written reads as what was read.

#include "documents/rtf/Portrait.h"
#include "documents/rtf/Rtf.h"
#include "documents/rtf/Writer.h"
#include "documents/rtf/fuzz/FuzzRun.h"

#include <QTextDocument>

void FuzzOne(const QByteArray& input) {
  QTextDocument first;
  if (rtf::Read(input, first).outcome == rtf::Outcome::Refused) {
    return;
  }
  Expect(rtf::Write(first) == input, "unchanged, but other bytes");
  const QByteArray written = rtf::Writer(first).Write();
  QTextDocument second;
  rtf::Read(written, second);
  const QString difference = support::Difference(support::Portrait(first), support::Portrait(second));
  Expect(difference.isEmpty(), "reads differently when written", difference.toUtf8() + "\n--- written:\n" + written);
  Expect(rtf::Writer(second).Write() == written, "written differently the second time", written);
}
