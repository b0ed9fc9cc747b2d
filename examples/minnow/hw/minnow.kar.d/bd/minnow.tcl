# Rebuilds the block design.
create_bd_design minnow
