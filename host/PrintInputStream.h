// The document's bytes, as the framework hands them to an interpreter.
//
// Ownership: an interpreter borrows its input from its factory's call to the end of its destructor
// and never deletes it. Between its passes the host may use the stream for something else, another
// interpreter included, for every pass and query begins anew:
//   Open("rb"), Seek(0, 0), reads and positions, ClearEndOfFile, Close
// with ClearEndOfFile and SetPosition in between where the interpreter goes back. Bytes may be
// fetched in blocks, ahead of what has been interpreted; at the end the stream stands behind the
// last byte that was taken. Nothing is called outside of passes and queries. All calls come on the
// thread of the pass.
//
// Positions are bytes from the start. A negative status is a failure, any other a success. Nothing
// should be thrown from here: whatever is ends the pass or query, which then answers 0, and may
// leave the stream open.
//
// Byte and end conditions, relied upon throughout:
// 1. A failed ReadByte consumes nothing and leaves the byte as it was. From the first read that
//    fails at the end of the data HasMoreData is 0, until ClearEndOfFile or Open.
// 2. IsReadable is exactly 1 while a byte waits to be read, pushed back or not; it is something
//    else as soon as the last byte has been read, before any read has failed.
// 3. Pushing back the byte just read steps back to it, and GetPosition then gives its position. Any
//    other byte, a 0 after a failed read included, waits in front of the data without a position
//    of its own. Seek and SetPosition drop it. One byte can wait at a time.
// 4. A stream that cannot tell positions fails in GetPosition. It is then read byte by byte.
#pragma once

class PrintInputStream {
public:
  // Rewinds and clears every condition. `mode` is "rb". The result is ignored: a stream that could
  // not be opened answers IsReadable with 0.
  virtual int Open(const char* mode) = 0;
  // Reads exactly `count` bytes, 0 or more, into a buffer with room for them. With fewer left it
  // takes those, writes how many, and fails. `countRead` is never null.
  virtual int Read(void* buffer, int count, int* countRead) = 0;
  // Reads one byte. See 1.
  virtual int ReadByte(char* byte) = 0;
  // Goes to a position that GetPosition gave since Open, and drops a byte pushed back.
  virtual int SetPosition(unsigned position) = 0;
  // `origin` is 0 (from the start) or 2 (from the end); only (0, 0) and (0, 2) are asked for.
  virtual int Seek(int offset, int origin) = 0;
  // The byte is the next to be read. See 3.
  virtual int UnreadByte(char byte) = 0;
  // The position of the byte to be read next. See 3 and 4.
  virtual int GetPosition(unsigned* position) = 0;
  // Exactly 1 or anything else. See 2.
  virtual int IsReadable() = 0;
  // Ends a pass or query. The result is ignored.
  virtual int Close() = 0;
  // Nonzero until a read has failed at the end of the data. See 1.
  virtual int HasMoreData() = 0;
  // 0 in the normal state. While it is anything else no decode filter is attached to the document,
  // so its images are read and not drawn.
  virtual int GetState() = 0;
  // Makes HasMoreData nonzero again; the position stays.
  virtual int ClearEndOfFile() = 0;

protected:
  ~PrintInputStream() = default;
};
