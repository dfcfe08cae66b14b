#include "sample_models.h"

namespace plm_models {

const std::vector<SampleModel>& SampleParts() {
  static const std::vector<SampleModel> parts = {
      {L"bolt.sldprt", L"Hexagon bolt M8\u00d740", L"Steel 8.8", L"0.0214", 3},
      {L"bolt-m10x60.sldprt", L"Hexagon bolt M10\u00d760", L"Steel 8.8", L"0.0487"},
      {L"bolt-m12x80.sldprt", L"Hexagon bolt M12\u00d780", L"Steel 10.9", L"0.0921"},
      {L"cap-screw-m6x20.sldprt", L"Cap screw M6\u00d720", L"Steel 12.9", L"0.0068"},
      {L"nut.sldprt", L"Hexagon nut M8", L"Steel 8", L"0.0052", 2},
      {L"nut-m10.sldprt", L"Hexagon nut M10", L"Steel 8", L"0.0116"},
      {L"lock-nut-m8.sldprt", L"Lock nut M8", L"Steel 8", L"0.0055"},
      {L"washer-m8.sldprt", L"Washer M8", L"Steel", L"0.0018"},
      {L"washer-m10.sldprt", L"Washer M10", L"Steel", L"0.0035"},
      {L"bracket.sldprt", L"Angle bracket", L"S235JR", L"0.412", 2},
      {L"bracket-long.sldprt", L"Angle bracket, long", L"S235JR", L"0.655"},
      {L"plate.sldprt", L"Base plate 200\u00d7120", L"S355J2", L"1.884"},
      {L"gusset.sldprt", L"Gusset plate", L"S235JR", L"0.238", 2},
      {L"rail-600.sldprt", L"Rail 600 mm", L"EN AW-6060", L"1.120", 2},
      {L"rail-900.sldprt", L"Rail 900 mm", L"EN AW-6060", L"1.680"},
      {L"foot.sldprt", L"Levelling foot", L"PA6 GF30", L"0.093"},
      {L"cover.sldprt", L"Cover sheet", L"DC01", L"0.847"},
      {L"shaft.sldprt", L"Shaft \u00d820", L"C45E", L"0.731"},
      {L"bushing.sldprt", L"Bushing 20/26", L"CuSn12", L"0.058"},
      {L"\u652f\u67b6.sldprt", L"\u652f\u67b6\uff08\u5de6\uff09", L"Q235B", L"0.436", 2},
      {L"\u8f74\u627f\u5ea7.sldprt", L"\u8f74\u627f\u5ea7 UCP204", L"HT200", L"0.660"},
      {L"\u57ab\u7247.sldprt", L"\u57ab\u7247 \u03c610", L"65Mn", L"0.0031"},
  };
  return parts;
}

const std::vector<SampleAssembly>& SampleAssemblies() {
  static const std::vector<SampleAssembly> assemblies = {
      {L"frame.sldasm",
       L"Frame 600\u00d7900",
       2,
       {{L"rail-600.sldprt", 2},
        {L"rail-900.sldprt", 2},
        {L"bracket.sldprt", 4},
        {L"bolt.sldprt", 8},
        {L"nut.sldprt", 8},
        {L"washer-m8.sldprt", 8},
        {L"foot.sldprt", 4},
        {L"gusset.sldprt", 1}}},
      {L"bearing-unit.sldasm",
       L"Bearing unit",
       1,
       {{L"\u8f74\u627f\u5ea7.sldprt", 1},
        {L"shaft.sldprt", 1},
        {L"bushing.sldprt", 2},
        {L"bolt-m10x60.sldprt", 2},
        {L"washer-m10.sldprt", 2}}},
      {L"\u673a\u67b6.sldasm",
       L"\u673a\u67b6\u603b\u6210",
       1,
       {{L"\u652f\u67b6.sldprt", 2}, {L"plate.sldprt", 1}, {L"bolt.sldprt", 4}, {L"\u57ab\u7247.sldprt", 4}}},
  };
  return assemblies;
}

const std::vector<SampleDrawing>& SampleDrawings() {
  static const std::vector<SampleDrawing> drawings = {
      {L"frame.slddrw", L"Frame 600\u00d7900, general arrangement", L"frame.sldasm"},
      {L"bracket.slddrw", L"Angle bracket", L"bracket.sldprt"},
      {L"bolt.slddrw", L"Hexagon bolt M8\u00d740", L"bolt.sldprt"},
      {L"bearing-unit.slddrw", L"Bearing unit", L"bearing-unit.sldasm"},
      {L"\u652f\u67b6.slddrw", L"\u652f\u67b6\u96f6\u4ef6\u56fe", L"\u652f\u67b6.sldprt"},
      {L"\u673a\u67b6.slddrw", L"\u673a\u67b6\u603b\u88c5\u56fe", L"\u673a\u67b6.sldasm"},
  };
  return drawings;
}

}  // namespace plm_models
