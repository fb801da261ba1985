// The example host's tour of media time: ticks, frames and rates.
#ifndef QUOREL_EXAMPLES_HOST_MEDIATIME_H
#define QUOREL_EXAMPLES_HOST_MEDIATIME_H

/// Prints a few conversions between seconds, ticks and frames to stdout.
void ShowMediaTime();

#endif
