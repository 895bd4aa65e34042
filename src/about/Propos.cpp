#include "about/Propos.h"

#include "core/MDIKuvo.h"
#include "core/Platform.h"
#include "core/Program.h"

namespace kuvo {

namespace {

// Link colour, blue-green-red.
constexpr unsigned kLinkBlue = 0xC00000;

void SetLabel(Label& label, const char* caption, int left, int top, int width, int height = 255) {
  label.Caption = QString::fromUtf8(caption);
  label.Move(left, top, width, height);
  label.Alignment = 2;
}

}  // namespace

const char* const Propos::kMail = "kuvo@example.org";
const char* const Propos::kWeb = "https://kuvo.example.org";

int PicClip::GraphicCell(int index) const {
  if (index < 0 || index >= Cols) Raise(Err::InvalidPropertyValue);
  return index;
}

ProposUi::ProposUi(Propos& f)
    : Label12(f, "Label12"),
      Label10(f, "Label10"),
      Label13(f, "Label13"),
      Label5(f, "Label5"),
      Label6(f, "Label6"),
      Label7(f, "Label7"),
      Label3(f, "Label3"),
      Label1(f, "Label1"),
      Label4(f, "Label4"),
      Label2(f, "Label2"),
      Picture1(f, "Picture1"),
      Timer1(f, "Timer1"),
      Ok(f, "Ok"),
      Image1(f, "Image1"),
      Image2(f, "Image2"),
      Image3(f, "Image3"),
      Image4(f, "Image4"),
      Image5(f, "Image5"),
      Image6(f, "Image6") {
  f.Caption = QStringLiteral("A Propos");
  f.MDIChild = false;
  f.Width = 7200;
  f.Height = 5160;
  // A top-level window, centred on the screen.
  f.Left = (f.Sys().ScreenWidth() - f.Width) / 2;
  f.Top = (f.Sys().ScreenHeight() - f.Height) / 2;

  // The animation on the left, the texts on the right.
  Picture1.Move(240, 240, 1680, 1680);

  constexpr int left = 2160;
  constexpr int width = 4800;
  SetLabel(Label12, "Jeu du Kuvo", left, 240, width, 480);
  Label12.FontSize = 18;
  Label12.FontBold = true;
  SetLabel(Label2, "", left, 780, width);
  SetLabel(Label10, "Ecrit et mis au point par", left, 1200, width);
  SetLabel(Label13, "L'équipe Kuvo", left, 1500, width);
  Label13.FontBold = true;
  SetLabel(Label5, "Adresse non communiquée", left, 1860, width);
  SetLabel(Label6, "", left, 2100, width);
  SetLabel(Label7, "", left, 2340, width);
  SetLabel(Label3, "Téléphone non communiqué", left, 2700, width);
  SetLabel(Label1, "Envoyer un courriel", left, 3060, width);
  Label1.ForeColor = kLinkBlue;
  Label1.ToolTipText = QString::fromUtf8("Écrire à l'équipe Kuvo");
  SetLabel(Label4, "kuvo.example.org", left, 3360, width);
  Label4.ForeColor = kLinkBlue;
  Label4.ToolTipText = QStringLiteral("Cliquez sur ici pour lancer votre navigateur");

  // A strip of decoration under the animation.
  Image* images[] = {&Image1, &Image2, &Image3, &Image4, &Image5, &Image6};
  for (int k = 0; k < 6; ++k) {
    images[k]->Picture = k + 1;
    images[k]->Left = 240 + k * 600;
    images[k]->Top = 3960;
    images[k]->Width = 480;
    images[k]->Height = 480;
  }

  Ok.Caption = QStringLiteral("&Ok");
  Ok.Move(5520, 3960, 1440, 480);

  Timer1.Interval = 50;

  Timer1.Tick = [&f] { f.Timer1_Timer(); };
  Label1.Click = [&f] { f.Label1_Click(); };
  Label4.Click = [&f] { f.Label4_Click(); };
  Ok.Click = [&f] { f.Ok_Click(); };
}

Propos::Propos(Program& program) : FormOf(program, kName) {}

void Propos::Form_Load() {
  App().Win<MDIKuvo>().Hide();
  PicClip1.Cols = 7;
  ProposUi& u = ui();
  u.Picture1.Picture = PicClip1.GraphicCell(0);
  ImageCourante = 1;
  AnimationActive = 1;
  u.Label2.Caption = QStringLiteral(" Versión") + QStringLiteral("   ") +
                     QStringLiteral("%1.%2.%3")
                         .arg(KUVO_VERSION_MAJOR)
                         .arg(KUVO_VERSION_MINOR)
                         .arg(KUVO_VERSION_PATCH);
}

void Propos::Timer1_Timer() {
  if (AnimationActive != 1) return;
  // Cells 2, 3, 4, 5, 0, 1 in turn: the seventh cell is never shown.
  ++ImageCourante;
  if (ImageCourante == 6) ImageCourante = 0;
  ui().Picture1.Picture = PicClip1.GraphicCell(ImageCourante);
}

void Propos::Label1_Click() {
  Sys().ShellExecute(QStringLiteral("Open"), QStringLiteral("mailto:") + QLatin1String(kMail));
}

void Propos::Label4_Click() { Sys().ShellExecute(QStringLiteral("Open"), QLatin1String(kWeb)); }

void Propos::Ok_Click() {
  Unload();
  App().Win<MDIKuvo>().Show();
}

void Propos::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("ImageCourante"), PropValue::Int(ImageCourante));
  sink(QStringLiteral("AnimationActive"), PropValue::Int(AnimationActive));
  sink(QStringLiteral("PicClip1.Cols"), PropValue::Int(PicClip1.Cols));
}

}  // namespace kuvo
