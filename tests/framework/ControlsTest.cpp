#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "Controls.h"
#include "TestSupport.h"

namespace orv {
namespace {

using testing::MessageOf;

std::vector<TControl*> ControlsOf(const TWinControl& parent) {
  std::vector<TControl*> controls;
  for (int i = 0; i < parent.GetControlCount(); ++i) controls.push_back(parent.GetControl(i));
  return controls;
}

// A form-like owner with a panel, a label and a button; the owner is not always the parent.
struct TScene {
  std::unique_ptr<TWinControl> Owner = std::make_unique<TWinControl>();
  TWinControl* Panel = new TWinControl(Owner.get());
  TGraphicControl* Label = new TGraphicControl(Owner.get());
  TWinControl* Button = new TWinControl(Owner.get());

  TScene() {
    Panel->SetParent(Owner.get());
    Button->SetParent(Panel);
    Label->SetParent(Panel);
  }
};

TEST(Controls, ParentsListTheirControlsAndRefuseCycles) {
  TScene scene;
  // Controls without a window come first, as the platform lists them.
  EXPECT_EQ(ControlsOf(*scene.Panel), (std::vector<TControl*>{scene.Label, scene.Button}));
  EXPECT_EQ(scene.Button->GetParentComponent(), scene.Panel);
  EXPECT_TRUE(scene.Owner->ContainsControl(scene.Button));
  EXPECT_TRUE(scene.Panel->ContainsControl(scene.Panel));
  EXPECT_FALSE(scene.Button->ContainsControl(scene.Panel));
  EXPECT_EQ(MessageOf<EListError>([&] { scene.Panel->GetControl(2); }), "List index out of bounds (2)");

  // Moving a control takes it out of its old parent.
  scene.Label->SetParent(scene.Button);
  EXPECT_EQ(ControlsOf(*scene.Panel), (std::vector<TControl*>{scene.Button}));
  EXPECT_EQ(ControlsOf(*scene.Button), (std::vector<TControl*>{scene.Label}));
  scene.Owner->InsertControl(scene.Label);
  EXPECT_EQ(scene.Label->GetParent(), scene.Owner.get());
  EXPECT_EQ(scene.Button->GetControlCount(), 0);

  for (TWinControl* parent : {scene.Panel, scene.Button})
    EXPECT_EQ(MessageOf<EInvalidOperation>([&] { scene.Panel->SetParent(parent); }),
              "A control cannot have itself as its parent");
  EXPECT_EQ(scene.Panel->GetParent(), scene.Owner.get());

  scene.Panel->RemoveControl(scene.Label);  // not its control: nothing
  EXPECT_EQ(scene.Label->GetParent(), scene.Owner.get());
  scene.Owner->RemoveControl(scene.Label);
  EXPECT_EQ(scene.Label->GetParent(), nullptr);
  EXPECT_EQ(ControlsOf(*scene.Owner), (std::vector<TControl*>{scene.Panel}));
}

TEST(Controls, FreedInEitherOrder) {
  {  // A parent freed before its controls leaves them without a parent.
    TScene scene;
    delete scene.Panel;
    EXPECT_EQ(scene.Button->GetParent(), nullptr);
    EXPECT_EQ(scene.Label->GetParent(), nullptr);
    EXPECT_EQ(scene.Owner->GetControlCount(), 0);
    EXPECT_EQ(scene.Owner->GetComponentCount(), 2);
    scene.Button->SetParent(scene.Owner.get());
  }
  {  // Controls freed before their parent leave its list.
    TScene scene;
    delete scene.Button;
    EXPECT_EQ(ControlsOf(*scene.Panel), (std::vector<TControl*>{scene.Label}));
    delete scene.Label;
    EXPECT_EQ(scene.Panel->GetControlCount(), 0);
  }
  {  // The owner frees newest first: the button goes before the panel it contains.
    TScene scene;
    scene.Button->SetParent(scene.Owner.get());
    scene.Panel->SetParent(scene.Button);
  }
  {  // A control parented by a control that another owner frees first.
    auto owner = std::make_unique<TComponent>();
    auto* child = new TGraphicControl(owner.get());
    {
      TWinControl parent;
      child->SetParent(&parent);
    }
    EXPECT_EQ(child->GetParent(), nullptr);
  }
}

TEST(Controls, PublishedPropertiesWithOwnedFont) {
  TControl control;
  std::vector<String> names;
  for (PPropInfo info : GetPropList(&control)) names.push_back(info->Name);
  EXPECT_EQ(names, (std::vector<String>{"Name", "Tag", "Left", "Top", "Width", "Height", "Align",
                                        "Caption", "Color", "Cursor", "Enabled", "Font", "Hint",
                                        "Text", "Visible"}));
  for (const char* name : {"Align", "Color", "Cursor", "Enabled", "Visible"})
    EXPECT_TRUE(IsDefaultPropValue(&control, FindPropInfo(&control, name))) << name;

  SetPropValue(&control, "Caption", Variant("OK"));
  EXPECT_EQ(GetPropValue(&control, "Text").AsString(), "OK");
  EXPECT_FALSE(IsStoredProp(&control, "Text"));
  SetEnumProp(&control, "Align", "alClient");
  EXPECT_EQ(control.GetAlign(), alClient);
  control.SetBounds(1, 2, 30, 40);
  EXPECT_EQ(GetOrdProp(&control, "Height"), 40);

  TFont* own = control.GetFont();
  TFont bold;
  bold.SetStyle({fsBold});
  SetObjectProp(&control, "Font", &bold);  // copies the values into the control's own font
  EXPECT_EQ(control.GetFont(), own);
  EXPECT_EQ(own->GetStyle(), TFontStyles{fsBold});
  EXPECT_EQ(GetObjectProp(&control, "Font"), own);
}

TEST(Cursors, NamesAndNumbers) {
  EXPECT_EQ(CursorToString(crHourGlass), "crHourGlass");
  EXPECT_EQ(CursorToString(crSize), "crSizeAll");
  EXPECT_EQ(CursorToString(-30), "-30");
  EXPECT_EQ(StringToCursor("CRDEFAULT"), crDefault);
  EXPECT_EQ(StringToCursor("-11"), crHourGlass);
  EXPECT_EQ(MessageOf<EConvertError>([] { StringToCursor("crBusy"); }),
            "'crBusy' is not a valid integer value");
}

class TPaletteSample : public TComponent {
  ORV_CLASS(TPaletteSample, TComponent)
 public:
  using TComponent::TComponent;
};
ORV_IMPLEMENT_CLASS(TPaletteSample)

bool HasPage(const String& name) {
  const std::vector<String> pages = GetPalettePages();
  return std::count(pages.begin(), pages.end(), name) == 1;
}

TEST(Palette, PagesKeepTheirClassesInOrder) {
  EXPECT_EQ(MessageOf<EComponentError>([] {
              RegisterComponents("Refused", {TPaletteSample::StaticClass(), TFont::StaticClass()});
            }),
            "TFont is not a component class");
  EXPECT_FALSE(HasPage("Refused"));
  EXPECT_EQ(GetClass("TPaletteSample"), nullptr);

  RegisterComponents("Tests", {TPaletteSample::StaticClass(), TWinControl::StaticClass()});
  RegisterComponents("tests", {TGraphicControl::StaticClass(), TPaletteSample::StaticClass()});
  EXPECT_TRUE(HasPage("Tests"));
  EXPECT_EQ(GetPaletteClasses("TESTS"),
            (std::vector<TClass>{TPaletteSample::StaticClass(), TWinControl::StaticClass(),
                                 TGraphicControl::StaticClass()}));
  EXPECT_EQ(GetClass("TPaletteSample"), TPaletteSample::StaticClass());
  EXPECT_TRUE(GetPaletteClasses("No such page").empty());
  UnRegisterClass(TPaletteSample::StaticClass());
}

}  // namespace
}  // namespace orv
