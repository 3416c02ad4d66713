#include "text/format/word_list.h"

namespace nimbletype::text {

std::string wordList(const std::vector<std::string>& words) {
  std::string list;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) list += i + 1 == words.size() ? " and " : ", ";
    list += words[i];
  }
  return list;
}

}  // namespace nimbletype::text
