#include "run/report/drawing.hpp"

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>

namespace velmora {
namespace {

std::filesystem::path ModulePath() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path() / kDrawingModule;
}

[[noreturn]] void FailToLoad() {
  const char* reason = dlerror();
  throw std::runtime_error(std::string("pictures need the drawing module, which cannot be loaded: ") +
                           (reason != nullptr ? reason : "it is not one"));
}

// It stays loaded: Qt does not leave a program.
void* LoadModule() {
  void* module = dlopen(ModulePath().c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) {
    FailToLoad();
  }
  return module;
}

template <typename Procedure>
Procedure LoadProcedure(const char* name) {
  static void* const module = LoadModule();
  void* symbol = dlsym(module, name);
  if (symbol == nullptr) {
    FailToLoad();
  }
  return reinterpret_cast<Procedure>(symbol);
}

}  // namespace

std::string LoadAndDraw(const PictureOrder& order) {
  static const auto draw = LoadProcedure<DrawPictureProcedure>(kDrawPictureName);
  std::string answer;
  if (!draw(order, answer)) {
    throw std::runtime_error("cannot draw the picture: " + answer);
  }
  return answer;
}

std::string LoadAndDrawDocument(const DocumentOrder& order) {
  static const auto draw = LoadProcedure<DrawDocumentProcedure>(kDrawDocumentName);
  std::string answer;
  if (!draw(order, answer)) {
    throw std::runtime_error("cannot draw the document: " + answer);
  }
  return answer;
}

}  // namespace velmora
