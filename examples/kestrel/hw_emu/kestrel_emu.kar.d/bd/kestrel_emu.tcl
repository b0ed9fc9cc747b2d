# Rebuilds the emulation block design.
create_bd_design kestrel_emu
