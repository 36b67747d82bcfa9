#pragma once
// The main window put together: its variables, its controls and the handlers that the
// program's parts contribute, wired to each other and to the platform.
#include <filesystem>

#include "app/reply_fan_out.h"
#include "files/compare_file.h"
#include "files/data_log.h"
#include "files/recent_files.h"
#include "files/restore_points.h"
#include "files/settings_file.h"
#include "link/link_state.h"
#include "link/reply_dispatcher.h"
#include "link/serial_session.h"
#include "link/transfers.h"
#include "link/wire.h"
#include "live/acceleration_fuel.h"
#include "live/airflow_output.h"
#include "live/boost_control.h"
#include "live/injector_adjust.h"
#include "live/live_chart.h"
#include "live/live_controls.h"
#include "live/live_data.h"
#include "live/panel_controls.h"
#include "live/panel_selector.h"
#include "live/settings_panels.h"
#include "live/stream.h"
#include "maps/automap.h"
#include "maps/block_commands.h"
#include "maps/cell_editor.h"
#include "maps/edit_commands.h"
#include "maps/edit_history.h"
#include "maps/form5.h"
#include "maps/map_axes.h"
#include "maps/map_blocks.h"
#include "maps/map_controls.h"
#include "maps/map_row_writer.h"
#include "maps/map_state.h"
#include "firmware/form2.h"
#include "setup/form3.h"
#include "shell/form1_controls.h"
#include "shell/form1_shell.h"
#include "shell/form4.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

class Form1 {
 public:
  Form1(Platform& platform, std::filesystem::path program_folder);
  Form1(const Form1&) = delete;
  Form1& operator=(const Form1&) = delete;

  // Start-up: lists, grids, captions; offline.
  void Form_Load();

  Platform& platform;
  ProgramState vars;
  Form1Controls c;
  MapControls map_controls;
  LiveControls live_controls;
  PanelControls panel_controls;

  LinkState link;
  Wire wire;

  Form1Shell shell;
  SerialSession session;
  ReplyDispatcher dispatcher;
  Transfers transfers;

  LiveData live;
  LiveChart chart;
  LiveStream stream;
  SettingsPanels settings_panels;
  PanelSelector panels;
  AccelerationFuel acceleration_fuel;
  BoostControl boost;
  AirflowOutput airflow;
  InjectorAdjust injector;
  DataLog data_log;
  SettingsFile settings_file;
  CompareFile compare_file;
  RestorePoints restore_points;
  RecentFiles recent_files;

  MapState maps;
  EditHistory map_history;
  MapAxes axes;
  MapBlocks map_blocks;
  MapRowWriter map_writer;
  CellEditor editor;
  EditCommands edits;
  BlockCommands block_commands;
  Automap automap;

  ReplyFanOut replies;

 private:
  // The settings file, its comparison, the recent files and the restore points, tied to the
  // parts they reach.
  void wire_files();
  // A status frame's values for the data log and the chart.
  void take_live_row(const LiveRow& row);
};

// Every window of the program.
class Program {
 public:
  Program(Platform& platform, std::filesystem::path program_folder);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  Form1 form1;
  Form2 form2;
  Form3 form3;
  Form4 form4;
  Form5 form5;
};

}  // namespace nerit
