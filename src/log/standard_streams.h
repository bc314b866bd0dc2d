// The three standard streams, which a caller may have closed.

#ifndef LUMO_LOG_STANDARD_STREAMS_H_
#define LUMO_LOG_STANDARD_STREAMS_H_

namespace lumo {

// Opens a placeholder, which can be neither read nor written, for each of the
// file descriptors 0, 1 and 2 that is closed. Otherwise the next file to be
// opened, a log or a table, would become standard output or standard error, and
// messages would be written to it. Call this before any other file is opened.
void OccupyStandardStreams();

}  // namespace lumo

#endif  // LUMO_LOG_STANDARD_STREAMS_H_
