#!/bin/bash
# One task per job in jobs/: sbatch --array=0-$(($(ls jobs/*.json | wc -l) - 1)) array.sh
#SBATCH --job-name=flokluk
#SBATCH --cpus-per-task=2
#SBATCH --mem=4G
#SBATCH --time=00:10:00
jobs=(jobs/*.json)
exec flokluk-batch --skip-done "${jobs[$SLURM_ARRAY_TASK_ID]}"
