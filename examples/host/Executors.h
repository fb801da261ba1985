// The example host's tour of executors: a worker pool and an event loop.
#ifndef QUOREL_EXAMPLES_HOST_EXECUTORS_H
#define QUOREL_EXAMPLES_HOST_EXECUTORS_H

/// Hands work to a pool (at once and delayed) and to an event-loop thread,
/// shuts both down in order and prints what ran where.
void ShowExecutors();

#endif
