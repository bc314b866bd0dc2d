// The three standard streams, which a caller may have closed.

#ifndef LUMO_LOG_STANDARD_STREAMS_H_
#define LUMO_LOG_STANDARD_STREAMS_H_

namespace lumo {

// Occupies those of the file descriptors 0, 1 and 2 that are closed, with
// something that can be neither read nor written, so that using such a stream
// fails as before. Otherwise the next file to be opened, a log or a table,
// would become standard output or standard error, and messages would go there.
// To be called before any other file is opened.
void OccupyStandardStreams();

}  // namespace lumo

#endif  // LUMO_LOG_STANDARD_STREAMS_H_
