// Headers that most files of the graph's window use, compiled once.
#include <qcustomplot.h>

#include <QtWidgets>
#include <functional>
#include <string>
#include <vector>
