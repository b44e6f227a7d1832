// An average in the window: files dropped on the form, one taken out again, a look at the results, saving.

#include "ui/graph/view_window.hpp"
#include "ui/story.hpp"

namespace velmora::test {
namespace {

class EnsembleWindow : public Story {
 protected:
  using Ready = std::function<bool(QWidget*)>;

  void SetUp() override {
    Story::SetUp();
    int stride = 0;
    for (auto* make : {examples::MakeStride<1>, examples::MakeStride<2>, examples::MakeStride<3>}) {
      WriteTrialFile(Path("stride-" + std::to_string(++stride) + ".vmb"), make);
    }
  }

  /// When the form is there and shows that the step before is over, which it does as it asks anew, acts.
  void InForm(const Ready& ready, const std::function<void(QWidget*)>& act,
              const std::function<void()>& next) {
    person_.When("frmEnsemble", [this, ready, act, next](QWidget* form) {
      if (!ready(form)) {
        InForm(ready, act, next);
        return;
      }
      next();
      act(form);
    });
  }
  static std::function<void(QWidget*)> Pressing(const char* caption) {
    return [caption](QWidget* form) { Person::Press(form, caption); };
  }
  static Ready Shows(const char* caption, bool (*so)(const QPushButton&)) {
    return [caption, so](QWidget* form) {
      const auto buttons = form->findChildren<QPushButton*>();
      return std::any_of(buttons.begin(), buttons.end(), [&](const QPushButton* button) {
        return QString(button->text()).remove('&') == QString::fromUtf8(caption) && so(*button);
      });
    };
  }
  static Ready Can(const char* caption) {
    return Shows(caption, [](const QPushButton& button) { return button.isEnabled(); });
  }
  /// It is the step that Enter takes.
  static Ready Offers(const char* caption) {
    return Shows(caption, [](const QPushButton& button) { return button.isDefault(); });
  }
  static Ready Lists(int files) {
    return [files](QWidget* form) {
      const auto* table = form->findChild<QTableView*>();
      return table != nullptr && table->model()->rowCount() == files;
    };
  }
  std::function<void(QWidget*)> Dropping(const std::vector<const char*>& names) const {
    std::vector<std::string> paths;
    for (const char* name : names) {
      paths.push_back(Path(name));
    }
    return [paths](QWidget* form) { DropFiles(form, paths); };
  }
};

TEST_F(EnsembleWindow, ThreeFilesAreDroppedOneIsTakenOutAndTheMeanIsSeenAndSaved) {
  window_->State().UserLevel = UserLevelKind::Expert;
  const auto saving = [this] {
    ExpectSaveTo("mean.vmb");
    InForm(Offers("Exit"), Pressing("Exit"), [] {});
  };
  const auto seen = [this, saving] {
    // The form is gone while the graph is there, and back when it has been closed.
    person_.When("frmGraph", [this, saving](QWidget* graph) {
      EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
      InForm(
          Can("10. Save to .VMB"),
          [graph = QPointer<QWidget>(graph)](QWidget* form) {
            EXPECT_TRUE(graph == nullptr || !graph->isVisible());
            Person::Press(form, "10. Save to .VMB");
          },
          saving);
      graph->close();
    });
  };
  const auto calculated = [this, seen] { InForm(Can("Graph Results"), Pressing("Graph Results"), seen); };
  const auto removed = [this, calculated] {
    person_.When("Remove Last File", [](QWidget* box) { Person::Press(box, "Yes"); });
    InForm(Lists(2), Pressing("9. Calculate Means SDs"), calculated);
  };
  const auto added = [this, removed] { InForm(Lists(3), Pressing("8. Remove Last File"), removed); };
  const auto begun = [this, added] { InForm(Lists(1), Dropping({"stride-2.vmb", "stride-3.vmb"}), added); };
  const auto chosen = [this, begun] {
    person_.When("frmChoose", [](QWidget* picker) {
      Person::Press(picker, "All");
      Person::Press(picker, "Process");
    });
    InForm(Can("6. Begin Average"), Pressing("6. Begin Average"), begun);
  };
  const auto loaded = [this, chosen] {
    InForm(Can("5. Channel Selection"), Pressing("5. Channel Selection"), chosen);
  };
  InForm(Can("4. Select First File"), Dropping({"stride-1.vmb"}), loaded);
  Choose("Ensemble averaging");

  EXPECT_EQ(Shown().HeaderLines[1], "Number of files in average: 2");
  EXPECT_EQ(Shown().NChan, 4);
  EXPECT_EQ(Shown().TrialTitle, "Ensemble averaged data");
  EXPECT_FALSE(Shown().FileChanged);
  EXPECT_TRUE(std::filesystem::exists(Path("mean.vmb")));
  EXPECT_NE(ReadFile(Path("Ensemble.ens")).find("Removed file: " + Path("stride-3.vmb")), std::string::npos);
  EXPECT_EQ(window_->State().view, nullptr);
}

}  // namespace
}  // namespace velmora::test
