#include "formats/fixed_names.hpp"

#include <algorithm>

#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

constexpr std::size_t kShownOfAText = 40;
constexpr std::size_t kShownTexts = 3;

std::string Quoted(std::string_view text) {
  const std::string shown = Left(text, kShownOfAText);
  return "\"" + shown + (shown.size() < text.size() ? "...\"" : "\"");
}

std::string Joined(const std::vector<std::string>& texts) {
  std::string all;
  for (std::size_t k = 0; k < texts.size() && k < kShownTexts; ++k) {
    all += (k == 0 ? "" : ", ") + texts[k];
  }
  return texts.size() > kShownTexts ? all + " and " + std::to_string(texts.size() - kShownTexts) + " more"
                                    : all;
}

}  // namespace

std::string NameRemark(std::string_view typed, std::size_t length) {
  const std::string kept = TrimRight(Left(typed, length));
  std::string remark;
  if (kept != TrimRight(typed)) {
    remark = "There is room for " + std::to_string(length) + " characters: " + Quoted(kept);
  } else if (CharacterCount(kept) > kNativeNameLength) {
    remark = ".vmb and .vma files keep " + std::to_string(kNativeNameLength) +
             " characters: " + Quoted(TrimRight(Left(kept, kNativeNameLength)));
  }
  const std::vector<std::string> lacking = OutsideWindows1252(kept);
  if (!lacking.empty()) {
    remark += (remark.empty() ? "" : "\n") + (".vmb, .vma and .vmu files lack " + Joined(lacking)) +
              " and hold \"?\" instead";
  }
  return remark;
}

void SavedNames::Add(std::string_view text, std::size_t length) {
  const std::string whole = TrimRight(text);
  const std::string kept = TrimRight(Left(whole, length));
  if (kept != whole) {
    cut_.push_back(Quoted(kept) + " for " + Quoted(whole));
  }
  for (std::string& character : OutsideWindows1252(kept)) {
    if (std::find(lacking_.begin(), lacking_.end(), character) == lacking_.end()) {
      lacking_.push_back(std::move(character));
    }
  }
}

void SavedNames::Tell(Workbench& workbench) const {
  if (!cut_.empty()) {
    AddNotice(workbench, "Cut in the saved file: " + Joined(cut_) + ".");
  }
  if (!lacking_.empty()) {
    AddNotice(workbench, "Saved as \"?\", since the format lacks them: " + Joined(lacking_) + ".");
  }
}

}  // namespace velmora
