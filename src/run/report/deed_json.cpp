#include "run/report/deed_json.hpp"

namespace velmora {

Json DeedJson(const Deed& deed) {
  Json refused = Json::array();
  for (const LeftChannel& left : deed.refused) {
    refused.push_back({{"channel", left.channel}, {"why", left.why}});
  }
  return {{"what", deed.what}, {"channels", deed.channels}, {"refused", refused}};
}

}  // namespace velmora
