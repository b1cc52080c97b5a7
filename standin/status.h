// The words of a status as OSLoadString gives them.
//
// A Failure may carry words of its own that tell more, such as the number of a line. They take the
// place of those in the table from the moment of the failure until another one carries words: as
// long as a caller needs who asks for the words of the status that it has just been given.
#pragma once

#include <string>

#include "notes/abi.h"
#include "store/status.h"

namespace standin {

using store::Failure;
using store::Status;

/// Makes the words that a failure carries, if it does, those of its status.
void keepWords(Failure& failure) noexcept;

/// The words of any status, its flag bits ignored; also of one that this library never gives out.
std::string wordsForCaller(STATUS status);

}  // namespace standin
