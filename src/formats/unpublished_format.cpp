#include "formats/unpublished_format.hpp"

namespace velmora {

std::string UnpublishedFormatText(std::string_view files, std::string_view refused, std::string_view why,
                                  std::string_view wayRound) {
  constexpr std::string_view kUsualReason = "Their layout is not published by its maker";
  return std::string(files) + " cannot be " + std::string(refused) + ".\n" +
         std::string(why.empty() ? kUsualReason : why) + ": what came of it would be guessed.\n" +
         std::string(wayRound);
}

}  // namespace velmora
