// The modes that zuSaHpiSensorReadingDisplay takes. Every other mode is like valueOnly.
#pragma once

namespace zusahpi::display::reading_mode {

enum Mode : int { ownLine = 0, valueOnly = 1, openLine = 2 };

} // namespace zusahpi::display::reading_mode
