#pragma once

#include <QDialog>
#include <QEventLoop>
#include <QPointer>
#include <functional>
#include <string>
#include <vector>

namespace velmora::ui {

/// A dialogue that is asked for a button more than once: it stays on the screen while what the button
/// does goes on, and is asked again or deleted then.
class AskingDialog : public QDialog {
  Q_OBJECT

 public:
  explicit AskingDialog(QWidget* parent);

  /// From now on it is not modal but stands beside this window, that of a graph, whose plot can be worked on.
  void StandBeside(QWidget* graph);
  [[nodiscard]] bool StandsBeside() const { return graph_ != nullptr; }
  /// Files were dropped on the dialogue: the answer to the next question for files.
  std::function<void(std::vector<std::string>)> onFiles;

  /// Shows the dialogue and waits for a button. Returns its caption without '&'.
  std::string Ask();

 protected:
  /// The caption that Esc and the window's close button stand for.
  void SetCancelCaption(const std::string& caption) { cancelCaption_ = caption; }
  /// Ends the waiting.
  void Press(const std::string& caption);
  /// Called each time before the dialogue waits: shows what changed meanwhile.
  virtual void Refresh() = 0;
  /// It has come up on the screen.
  virtual void Shown() {}

  void reject() override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void FocusFirst();

  QPointer<QWidget> graph_;
  QEventLoop loop_;
  std::string pressed_;
  std::string cancelCaption_ = "Cancel";
};

}  // namespace velmora::ui
