#pragma once

#include <string>

#include "benchmarks/support/Random.h"

/// Made-up texts for generated documents. All are valid UTF-8.
namespace Words {

/// A word of lower-case ASCII letters.
std::string plain(Random& random);

/// Two or three words written together, as in "toolbarItemWidth".
std::string joined(Random& random);

/// A sentence of about `bytes` bytes, ASCII only; now and then it holds "&", "<" or ">".
std::string sentence(Random& random, std::size_t bytes);

/// The same with words of several languages, none of them ASCII throughout.
std::string foreignSentence(Random& random, std::size_t bytes);

}  // namespace Words
