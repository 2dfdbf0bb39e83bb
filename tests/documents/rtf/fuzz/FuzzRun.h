#pragma once

#include <QByteArray>

#include <cstdio>
#include <cstdlib>

/// A target is a function of one input; the application that documents need is made before the first one.
void FuzzOne(const QByteArray& input);

/// A property that does not hold ends the run, and the input is kept.
inline void Expect(bool holds, const char* property, const QByteArray& detail = {}) {
  if (!holds) {
    std::fprintf(stderr, "%s\n%s\n", property, detail.constData());
    std::abort();
  }
}
