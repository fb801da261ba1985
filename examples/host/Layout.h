// The example host's tour of the layout engine: a small dialog.
#ifndef QUOREL_EXAMPLES_HOST_LAYOUT_H
#define QUOREL_EXAMPLES_HOST_LAYOUT_H

/// Builds a small dialog (a name row, options that may wrap, a row of
/// buttons), arranges it at a few window sizes and prints where each element
/// and separator was placed.
void ShowLayout();

#endif
