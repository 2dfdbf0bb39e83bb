#include "host/access/Beside.h"

#include <utility>

namespace host {

Beside::~Beside() {
  if (m_thread) {
    m_thread->wait();
  }
}

void Beside::Run(std::function<void()> work, Done done) {
  auto error = std::make_shared<std::optional<automation::Error>>();
  m_thread.reset(QThread::create([work = std::move(work), error] {
    try {
      work();
    } catch (const automation::Error& raised) {
      *error = raised;
    }
  }));
  connect(m_thread.get(), &QThread::finished, this, [this, error, done = std::move(done)] {
    m_thread->wait();
    m_thread.release()->deleteLater();
    done(*error);
  });
  m_thread->start();
}

}  // namespace host
