#pragma once

#include "core/Form.h"

namespace kuvo {

class Propos;

struct ProposUi {
  explicit ProposUi(Propos& f);
  Label Label12, Label10, Label13, Label5, Label6, Label7, Label3, Label1, Label4, Label2;
  PictureBox Picture1;  // shows the cell of the animation on show
  Timer Timer1;
  CommandButton Ok;
  Image Image1, Image2, Image3, Image4, Image5, Image6;
};

// A picture cut into cells along one strip; the animation shows one at a time.
struct PicClip {
  int Cols = 1;
  // The cell numbered `index`, from 0; the picture of a cell is its number.
  int GraphicCell(int index) const;
};

// The about window: who wrote the program, its version, a mail and a web link,
// over a small animation. The main window is hidden while it stands.
class Propos : public FormOf<Propos, ProposUi> {
 public:
  static constexpr const char* kName = "Propos";
  explicit Propos(Program& program);

  void Timer1_Timer();
  void Label1_Click();
  void Label4_Click();
  void Ok_Click();

  // The author's details, shown by the labels and used by the links.
  static const char* const kMail;
  static const char* const kWeb;

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  PicClip PicClip1;
  int ImageCourante = 0;
  Int16 AnimationActive = 0;
};

}  // namespace kuvo
