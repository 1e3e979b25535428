# Framer and decoder throughput
