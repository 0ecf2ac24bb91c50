// A program of somebody else's: it knows what is installed, and has a map/rect.h of its own.

#include <vexel/brindle/progress.h>
#include <vexel/brindle/specfile.h>
#include <vexel/data/calculation.h>
#include <vexel/data/dataset.h>
#include <vexel/legend/legend.h>
#include <vexel/legend/palettes.h>
#include <vexel/map/map.h>
#include <vexel/messages/messages.h>
#include <vexel/platform/archive.h>
#include <vexel/platform/host.h>
#include <vexel/platform/profile.h>
#include <vexel/render/mapgif.h>
#include <vexel/version.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "map/rect.h"

static_assert(sizeof(HostRect) == sizeof(int));
static_assert(VEXEL_VERSION_MAJOR * 100 + VEXEL_VERSION_MINOR >= 1 && VEXEL_VERSION_PATCH >= 0);
static_assert(std::is_trivially_copyable_v<CPoint> && std::is_trivially_copyable_v<CRect>);
static_assert(CPoint(1, 2) == CPoint{1, 2} && CPoint() == CPoint{});
static_assert(CRect(1, 2, 3, 4).bottom == 4 && CRect{} == CRect());

namespace {

int failures = 0;

void Check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "host: %s\n", what);
  ++failures;
}

class Page : public CMapGif {
 public:
  using CMapGif::CMapGif;
  static CObject* CreateObject() { return new Page; }
  static CRuntimeClass* GetThisClass() {
    static CRuntimeClass record{"Page", &Page::CreateObject, &CMapGif::GetThisClass};
    return &record;
  }
  CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

  void Draw(CVELAMap& map) {
    PrepareCoords(300, 200);
    ApplyCoords();
    DrawMap(&map, "");
    SetPixel(0, 0, 0x0000FF);
    DrawTitle();
    DrawLegend();
  }
};

class Host : public CHost {
 public:
  int ShowBox(const CString& text, unsigned) override {
    last = text;
    return answerOk;
  }
  CString GetProfileText(const char*, const char* key, const char* defaultText) override {
    return CString(key) == "sDecimal" ? CString(",") : CString(defaultText);
  }
  CString last;
};

template <typename Text>
void UseText(Text text) {
  const long position = 1;
  Check(text[0] == 'a' && text[position] == 'b' && text[sizeof(char)] == 'b', "subscript");
  Check(text == "ab" && "ab" == text && text != "b" && "b" != text, "equal");
  Check(text < "b" && "a" < text && text <= "ab" && "ab" >= text && text > CString(), "order");
  Check("x" + text + 'y' + "z" + text == "xabyzab" && 'x' + text == CVELAString("xab"), "sum");
  const char* plain = text;
  text += plain;
  text += 'c';
  text += text;
  Check(text.Mid(4) + text.Left(1) == "cababca", "parts");
  text.Format("%s=%d", (const char*)text, 12);
  Check(text == "ababcababc=12" && std::string_view(text.GetString()) == text.View(), "format");
  Check(std::string(text) == plain || std::strlen(text) == 13, "as a pointer");
}

void UseFiles(const CString& path) {
  {
    CSpecFile spec(0);
    Check(spec.Open(path, 1) != 0, "a file for writing");
    spec.PutLine("[Map]");
    spec.PutLine("Name", CVELAString("North"));
    spec.Close();
  }
  CFileStatus status;
  CVELAString name = path;
  Check(CFile::GetStatus(path, status) != 0 && status.size == 17, "the status of a file");
  CSpecFile spec(0);
  CVELAString keyword, value;
  Check(spec.Open(name, 0) != 0 && spec.GetLine(keyword, value, true) == 0, "a file for reading");
  spec.GetLine(keyword, value, true);
  Check(keyword.CompareNoCase("NAME") == 0 && value == "North", "a keyword line");
  CFile file;
  Check(file.Open(path + ".bin", CFile::modeCreate | CFile::modeWrite) != 0, "a binary file");
  CArchive archive(&file, CArchive::store);
  archive << 1 << path;
}

void UseRecords() {
  CRuntimeClass* record = CVELAMap::GetThisClass();
  const std::unique_ptr<CObject> object(record->CreateObject());
  Check(object->GetRuntimeClass() == record, "a class record");
  AfxClassInit(Page::GetThisClass());
  const std::unique_ptr<CObject> page(CRuntimeClass::CreateObject("Page"));
  Check(page != nullptr && page->GetRuntimeClass()->IsDerivedFrom(CGif::GetThisClass()), "a page");
  AfxClassTerm(Page::GetThisClass());
  CAreaStruct first, second;
  first.codes[0] = 1;
  second.codes[0] = 2;
  Check(first < second && first != second && std::min(second, first) == first, "keys");
}

void UseFunctions(Host& host) {
  std::array<char, 4> line{'a', ' ', 'b', '\0'};
  Check(std::string_view(strtoken(line.data(), " ", nullptr)) == "a", "strtoken");
  Check(std::string_view(d2txt(1234.5, 1, ',', '.', 1)) == "1,234.5", "d2txt");
  Check(txt2d("1.234,5", '.', ',') == 1234.5 && atod("2.5", 0) == 2.5, "txt2d");
  std::string_view rest = " x 7";
  double number = 0.0;
  Check(vexel::TakeToken(rest, " ") == "x" && vexel::IsWholeNumber("7"), "tokens");
  Check(vexel::ToWholeNumber("7") == 7 && vexel::ToNumber("1,5", '.', ',') == 1.5, "numbers");
  Check(vexel::TakePlainDecimal(rest = "7", number) && vexel::ToNumber("7") == number, "decimals");
  Check(vexel::EqualNoCase("A", "a") && vexel::TrimBlanks(" a ") == "a", "text");
  Check(vexel::Indicator(vexel::ratio, 3.0, 2.0) == 1.5, "an indicator");
  Check(vexel::TypicalDecimals(std::span<const double>(&number, 1)) == 2, "decimals of values");
  Check(vexel::PaletteColors(1, 7).size() == 7, "a palette");
  Check(vexel::MachineSeparators({}).decimal == ',', "the profile");
  Check(!vexel::MessageText(vexel::Message::noData).empty(), "a message");
  AfxMessageBox(vexel::FormatMessage(vexel::Message::errorAtLine, 12), 0, 0);
  Check(host.last.Find("12") > 0, "a box");
  CProgressDlg progress(0);
  Check(progress.Create(nullptr) != 0 && progress.CheckCancelButton() == 0, "progress");
  try {
    static_cast<void>(host.last[-1]);
    Check(false, "an exception");
  } catch (const CInvalidArgException&) {  // its type is known on both sides of the library
  }
}

void DrawPage(const CString& samples, const CString& path) {
  CVELAMap map;
  CVELAData data;
  CLegend legend;
  data.map = &map;
  map.data = &data;
  map.legend = &legend;
  Check(data.Build(samples + "/names.mdf", 1, 1) != 0, data.GetError());
  map.SetAreaDataPointers(&data);
  map.PrepareLevelDrawing(1);
  CMapOb* node = map.GetChild(0);
  Check(data.GetVarName(0).CompareNoCase(map.GetName()) != 0 && node->GetBoundRect() != CRect(),
        "a map");
  legend.UpdateData(&map, &data);
  Page page(&map, &legend, &data, path);
  page.Draw(map);
  page.DrawValueBox(node);
  Check(page.Save() != 0, "a picture");
}

}  // namespace

int main(int, char** arguments) {
  Host host;
  CHost::SetCurrent(&host);
  UseText(CString("ab"));
  UseText(CVELAString("ab"));
  UseFiles(CString(arguments[2]) + "/host.txt");
  UseRecords();
  UseFunctions(host);
  DrawPage(arguments[1], CString(arguments[2]) + "/host.gif");
  return failures == 0 ? 0 : 1;
}
