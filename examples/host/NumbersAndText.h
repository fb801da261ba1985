// The example host's tour of numbers as text: the user's separators and the
// expression calculator.
#ifndef QUOREL_EXAMPLES_HOST_NUMBERSANDTEXT_H
#define QUOREL_EXAMPLES_HOST_NUMBERSANDTEXT_H

/// Prints a number formatted with the user's separators and a calculated
/// expression to stdout.
void ShowNumbersAndText();

#endif
