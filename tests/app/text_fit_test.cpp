#include "tests/app/scene_test.h"
#include "tests/app/window_items.h"

namespace trellivar {
namespace {

/// Half a dot may be lost in rounding.
constexpr double rounding = 0.5;

QList<QQuickItem*> textsOf(const QQuickWindow& window) {
  QList<QQuickItem*> texts = seenItems(window);
  texts.removeIf([](QQuickItem* item) {
    return !isText(*item) || item->property("text") == QString(" ") ||
           item->property("text").toString().isEmpty();
  });
  return texts;
}

bool holds(const QRectF& outer, const QRectF& inner) {
  return outer.adjusted(-rounding, -rounding, rounding, rounding).contains(inner);
}

bool overlap(const QRectF& a, const QRectF& b) {
  const QRectF common = a & b;
  return common.width() > 2 * rounding && common.height() > 2 * rounding;
}

/// The control or sheet that a text is in; null: the window itself.
QQuickItem* surroundingsOf(QQuickItem& text) {
  for (QQuickItem* around = text.parentItem(); around; around = around->parentItem()) {
    if (isControl(*around) || around == sheetOf(text)) return around;
  }
  return nullptr;
}

std::string words(QQuickItem& text) { return text.property("text").toString().toStdString(); }

/// Nothing that is to be read is cut off in the smallest window, nor in one that is just high
/// enough to write two notes out.
class TextFit : public SceneTest {
protected:
  void expectEverythingFits(const QString& language) {
    SCOPED_TRACE(language.toStdString());
    enter(GetParam(), language);
    EXPECT_EQ(stage.window()->minimumSize(), QSize(880, 600));
    for (const int height : {600, 720}) {
      stage.resize(880, height);
      expectTextsFit();
    }
  }

private:
  void expectTextsFit() {
    const QList<QQuickItem*> texts = textsOf(*stage.window());
    EXPECT_GE(texts.size(), 5);
    for (QQuickItem* text : texts)
      expectFits(*text);
    for (qsizetype i = 0; i < texts.size(); ++i) {
      for (qsizetype other = i + 1; other < texts.size(); ++other)
        expectApart(*texts[i], *texts[other]);
    }
  }
  void expectFits(QQuickItem& text) {
    EXPECT_FALSE(text.property("truncated").toBool()) << words(text);
    EXPECT_LE(text.property("contentWidth").toReal(), text.width() + rounding) << words(text);
    const QRectF letters = lettersOf(text);
    EXPECT_TRUE(holds(QRectF({}, stage.window()->size()), letters)) << words(text);
    QQuickItem* around = surroundingsOf(text);
    if (around) {
      EXPECT_TRUE(holds(placeOf(*around), letters))
          << words(text) << " leaves " << described(*around).toStdString();
    }
    // In a control the lines may use its padding.
    if (!around || !isControl(*around)) {
      EXPECT_LE(text.property("contentHeight").toReal(), text.height() + rounding) << words(text);
    }
  }
  static void expectApart(QQuickItem& a, QQuickItem& b) {
    if (sheetOf(a) != sheetOf(b)) return; // one lies over the other on purpose
    EXPECT_FALSE(overlap(lettersOf(a), lettersOf(b))) << words(a) << " and " << words(b);
  }
};

TEST_P(TextFit, inTheSmallestWindow) {
  expectEverythingFits("en");
  expectEverythingFits("zh-Hans");
}

INSTANTIATE_TEST_SUITE_P(Screens, TextFit, everyScene(), nameOfScene);

} // namespace
} // namespace trellivar
