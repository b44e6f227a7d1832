#include "graph/picture.hpp"

#include "core/files/paths.hpp"
#include "core/text/text.hpp"

namespace velmora {

std::optional<PictureFormat> PictureFormatOf(std::string_view path) {
  const std::string extension = FileExtension(path);
  if (EqualNoCase(extension, "png")) {
    return PictureFormat::Png;
  }
  if (EqualNoCase(extension, "svg")) {
    return PictureFormat::Svg;
  }
  if (EqualNoCase(extension, "pdf")) {
    return PictureFormat::Pdf;
  }
  return std::nullopt;
}

}  // namespace velmora
