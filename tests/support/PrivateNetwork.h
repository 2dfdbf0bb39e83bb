#pragma once

namespace support {

/// A loopback network of this thread's own and of what it starts from now on, which can be cut: nothing comes through
/// and nobody is told. The thread goes back to the other one with the object.
class PrivateNetwork {
 public:
  PrivateNetwork();
  PrivateNetwork(const PrivateNetwork&) = delete;
  PrivateNetwork& operator=(const PrivateNetwork&) = delete;
  ~PrivateNetwork();

  /// False without the right to make one.
  bool IsThere() const { return m_isThere; }
  void Cut() const { Switch(false); }
  void Mend() const { Switch(true); }

 private:
  void Switch(bool on) const;

  int m_other = -1;
  bool m_isThere = false;
};

}  // namespace support
