// A component library that keeps to the contract CONTRACT_MAJOR.CONTRACT_MINOR, or to one that it says nothing of, and
// that has no class.

extern "C" {

int DllGetClassObject(const char*, void** factory) {
  *factory = nullptr;
  return -2147221231;
}

int DllCanUnloadNow() {
  return 0;
}

#ifdef CONTRACT_MAJOR
int DllGetContractVersion(int* major, int* minor) {
  *major = CONTRACT_MAJOR;
  *minor = CONTRACT_MINOR;
  return 0;
}
#endif

}  // extern "C"
