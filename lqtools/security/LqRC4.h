// LqRC4 enciphers a byte block in place with a text key by RC4, with one deliberate difference:
// two state bytes are exchanged by three XORs, which clears the byte when both indices meet. The
// output equals published RC4 only while they never meet, and only this class reads it back.
//
// Every call rebuilds the state from its key and starts the key stream anew; the members are
// working space that keeps the last state until the next call, Reset or destruction, which wipes
// it. An object belongs to one thread at a time. An empty or null key is refused: the data stays
// as it is and the result is null.
#pragma once

#include "lqtools/LqToolsExport.h"

class LQTOOLS_API LqRC4 {
 public:
  LqRC4();
  LqRC4(const LqRC4& other);
  LqRC4& operator=(const LqRC4& other);
  virtual ~LqRC4();

  // Fills both arrays with zero, so that no trace of the key stays in memory.
  void Reset();

  // Enciphers `size` bytes of `data` in place (zero bytes included) and returns `data`; a `size`
  // below 1 changes nothing. Null for an empty or null key, or for null `data`.
  char* Encrypt(char* data, int size, const char* key);
  // The same operation: enciphering twice with one key restores the data.
  char* Decrypt(char* data, int size, const char* key);

 private:
  unsigned char m_sbox[256];
  unsigned char m_keyBox[256];
};
