# Runs in the linked design.
puts "heron: linked"
