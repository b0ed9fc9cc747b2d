# Rebuilds the emulation block design.
create_bd_design minnow_emu
