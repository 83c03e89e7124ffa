// The document's bytes, as the framework hands them to an interpreter.
//
// An interpreter borrows its input and never deletes it. A pass over the document is Open,
// Seek(0, 0), reads, ClearEndOfFile, Close. Positions are bytes from the start. A negative status
// is a failure. One byte can be pushed back between two reads.
//
// Nothing should be thrown from here. Whatever is ends the pass or query, which then answers 0.
//
// Byte and end conditions, relied upon throughout:
// 1. A failed ReadByte consumes nothing and leaves the byte as it was. From the first read that
//    fails at the end of the data HasMoreData is 0, until ClearEndOfFile or Open.
// 2. IsReadable is exactly 1 while a byte waits to be read, pushed back or not; it is something
//    else as soon as the last byte has been read, before any read has failed.
// 3. Pushing back the byte just read steps back to it, and GetPosition then gives its position. Any
//    other byte, a 0 after a failed read included, waits in front of the data without a position
//    of its own. Seek and SetPosition drop it.
#pragma once

class PrintInputStream {
public:
  // Rewinds and clears every condition. `mode` is "rb".
  virtual int Open(const char* mode) = 0;
  // Reads exactly `count` bytes. With fewer left it takes those, writes how many, and fails.
  virtual int Read(void* buffer, int count, int* countRead) = 0;
  virtual int ReadByte(char* byte) = 0;
  virtual int SetPosition(unsigned position) = 0;
  // `origin` is 0 (from the start) or 2 (from the end).
  virtual int Seek(int offset, int origin) = 0;
  virtual int UnreadByte(char byte) = 0;
  virtual int GetPosition(unsigned* position) = 0;
  virtual int IsReadable() = 0;
  virtual int Close() = 0;
  virtual int HasMoreData() = 0;
  // 0 in the normal state.
  virtual int GetState() = 0;
  virtual int ClearEndOfFile() = 0;

protected:
  ~PrintInputStream() = default;
};
