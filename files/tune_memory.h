#pragma once
// A tune and the controller's memory: the 54 working-memory blocks that "Read Data from Unit"
// receives and "Write Data to Unit" sends, and the reduced EEPROM image. Pure: numbers in,
// bytes out and back.
//
// Every image this program writes reads back as the tune it came from, and that tune writes
// the same bytes again. Bytes it never writes read as the nearest value a tune holds: a
// correction byte as whole percent, a vortex period as the largest whole Hz that gives it.
#include <array>
#include <cstdint>

#include "files/tune.h"
#include "link/frames.h"
#include "link/memory_map.h"
#include "maps/load_axis.h"

namespace nerit {

inline constexpr int kMemoryBlocks = (kAirflowMapEnd - kSettingsBlockA) / 16;  // 54

// Block i holds working memory from 0x0240 + 16 i: settings A and B, the load axis, the speed
// axis, 16 correction rows, 32 airflow half rows.
using MemoryImage = std::array<FrameData, kMemoryBlocks>;
inline constexpr int memory_block_address(int i) {
  return kSettingsBlockA + 16 * i;
}

// The nine EEPROM blocks, at kEepromRequestOrder's addresses in that order.
using EepromImage = std::array<FrameData, kEepromRequestOrder.size()>;

// The blocks "Write Data to Unit" sends for the tune, `injsizecorr` as the tune holds it.
// ProgramError naming the field or cell that the controller cannot take.
MemoryImage memory_from_tune(const Tune& tune);

// The tune the blocks hold. `rpmfaktor` follows the cylinder count (4, 6, 8 give 30000000,
// 20000000, 15000000), otherwise it is the one given. The speed headings show each period as
// whole hundreds of rpm; the load headings are the load type's default axis (`in` supplies the
// pressure-sensor table; the throttle ends come from the blocks). The controller has no place
// for acceleration parameter 2: it reads as 0. ProgramError for an airflow period whose
// frequency a tune cannot hold.
Tune tune_from_memory(const MemoryImage& memory, std::int32_t rpmfaktor, const LoadAxisInputs& in);

// The controller axes a loaded tune sends: periods rpmfaktor / heading rounded, load points
// from the load headings for the tune's load type (`in` supplies the pressure-sensor table).
ControllerAxes axes_from_headings(const Tune& tune, const LoadAxisInputs& in);

// The nine blocks "Write to EEProm" sends: settings block A with its last byte 0, load points
// 1..12, correction rows 1..12 columns 1..8. ProgramError for a cell the controller cannot take.
EepromImage eeprom_from_tune(const Tune& tune);
// The tune with what an EEPROM image holds laid over it; everything else stays.
Tune with_eeprom(Tune tune, const EepromImage& eeprom);

}  // namespace nerit
