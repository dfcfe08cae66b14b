module plm_client

go 1.19
