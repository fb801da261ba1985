// The example host's tour of files and byte streams.
#ifndef QUOREL_EXAMPLES_HOST_FILES_H
#define QUOREL_EXAMPLES_HOST_FILES_H

/// Writes a few values to a file in the temporary directory through a buffered
/// stream with a CRC, reads them back, and prints what it did to stdout.
void ShowFiles();

#endif
