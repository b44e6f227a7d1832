// Headers that most files of the drawing use, compiled once.
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>
