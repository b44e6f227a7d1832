#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// What people are told of a format whose layout nobody has published, in the same words for all of them.
/// `files` names them ("Stimo files"), `refused` what is not done ("read"), `why` stands where the usual
/// reason does not hold (empty: the layout is not published), `wayRound` is a whole sentence.
std::string UnpublishedFormatText(std::string_view files, std::string_view refused, std::string_view why,
                                  std::string_view wayRound);

}  // namespace velmora
