#include "ui/dialogs/own_letters.hpp"

#include <QSet>

namespace velmora::ui {
namespace {

// Of the '&' before the letter; "&&" is a sign of the text. -1: none.
qsizetype MarkIn(const QString& caption) {
  for (qsizetype k = 0; k + 1 < caption.size(); ++k) {
    if (caption[k] == '&') {
      if (caption[k + 1] != '&') {
        return k;
      }
      ++k;
    }
  }
  return -1;
}

// First letters of words are found most easily.
qsizetype FreeLetter(const QString& caption, const QSet<QChar>& taken) {
  const auto isFree = [&](qsizetype k) {
    return caption[k].isLetterOrNumber() && !taken.contains(caption[k].toLower());
  };
  for (qsizetype k = 0; k < caption.size(); ++k) {
    if (isFree(k) && (k == 0 || caption[k - 1].isSpace())) {
      return k;
    }
  }
  for (qsizetype k = 0; k < caption.size(); ++k) {
    if (isFree(k)) {
      return k;
    }
  }
  return -1;
}

}  // namespace

QStringList WithLettersOfTheirOwn(QStringList captions) {
  QSet<QChar> taken;
  QList<qsizetype> losers;
  for (qsizetype k = 0; k < captions.size(); ++k) {
    const qsizetype mark = MarkIn(captions[k]);
    if (mark < 0) {
      continue;
    }
    const QChar letter = captions[k][mark + 1].toLower();
    if (taken.contains(letter)) {
      losers << k;
    }
    taken << letter;
  }
  for (const qsizetype k : losers) {
    QString& caption = captions[k];
    caption.remove(MarkIn(caption), 1);
    if (const qsizetype letter = FreeLetter(caption, taken); letter >= 0) {
      taken << caption[letter].toLower();
      caption.insert(letter, '&');
    }
  }
  return captions;
}

}  // namespace velmora::ui
