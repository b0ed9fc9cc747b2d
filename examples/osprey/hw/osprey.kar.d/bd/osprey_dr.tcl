# Rebuilds the block design of the dynamic region.
create_bd_design osprey_dr
